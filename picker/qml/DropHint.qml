// SPDX-License-Identifier: BSD-3-Clause
import MoodsetPicker 1.0
import QtQuick 2.15

// Lies over the window while something is dragged over it.
Rectangle {
    color: Style.background
    opacity: 0.9

    Placeholder {
        iconName: "add"
        title: qsTr("Drop a picture, an address or the folder of a bundle")
    }

}
