// SPDX-License-Identifier: BSD-3-Clause
import MoodsetPicker 1.0
import QtQuick 2.15
import QtQuick.Templates 2.15 as T

// A row of a list that can be chosen.
T.AbstractButton {
    id: control

    property string iconName

    implicitHeight: Style.touch
    leftPadding: Style.margin
    rightPadding: Style.margin
    focusPolicy: Qt.StrongFocus
    Accessible.role: Accessible.Button
    Accessible.name: text
    Keys.onReturnPressed: clicked()

    contentItem: Item {
        Icon {
            id: icon

            visible: control.iconName.length > 0
            x: control.mirrored ? parent.width - width : 0
            anchors.verticalCenter: parent.verticalCenter
            name: control.iconName
            color: Style.subdued
        }

        Label {
            x: icon.visible && !control.mirrored ? icon.width + Style.margin : mark.visible && control.mirrored ? mark.width + Style.gap : 0
            width: parent.width - (icon.visible ? icon.width + Style.margin : 0) - (mark.visible ? mark.width + Style.gap : 0)
            height: parent.height
            verticalAlignment: Text.AlignVCenter
            text: control.text
            Accessible.ignored: true
        }

        Icon {
            id: mark

            visible: control.checked
            x: control.mirrored ? 0 : parent.width - width
            anchors.verticalCenter: parent.verticalCenter
            name: "check"
            color: Style.accent
        }

    }

    background: Rectangle {
        radius: Style.radius
        color: control.down ? Style.pressed : control.hovered ? Style.raised : "transparent"

        FocusRing {
            control: control
            anchors.margins: 0
        }

    }

}
