// SPDX-License-Identifier: BSD-3-Clause
import MoodsetPicker 1.0
import QtQuick 2.15

// One of the program's own icons.
Image {
    property string name
    property color color: Style.foreground

    width: Style.icon
    height: width
    sourceSize.width: width
    sourceSize.height: height
    source: name ? "image://icon/" + name + "/" + color : ""
}
