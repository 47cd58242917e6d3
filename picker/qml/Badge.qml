// SPDX-License-Identifier: BSD-3-Clause
import MoodsetPicker 1.0
import QtQuick 2.15

// A word on a coloured field.
Rectangle {
    property alias text: label.text

    implicitWidth: label.implicitWidth + 2 * Style.gap
    implicitHeight: label.implicitHeight + Style.gap
    radius: height / 2
    color: Style.accent

    Label {
        id: label

        anchors.centerIn: parent
        color: Style.accentInk
        font.pixelSize: Style.smallText
        font.weight: Font.DemiBold
    }

}
