// SPDX-License-Identifier: BSD-3-Clause
import MoodsetPicker 1.0
import QtQuick 2.15
import QtQuick.Templates 2.15 as T

// A button that shows an icon alone. Its text is for those who do not see it.
T.Button {
    id: control

    property string iconName
    property color iconColor: Style.foreground
    property color hoverColor: Style.raised
    property bool mirrorsIcon: false

    implicitWidth: Style.touch
    implicitHeight: Style.touch
    opacity: enabled ? 1 : 0.45
    focusPolicy: Qt.StrongFocus
    Accessible.name: text

    contentItem: Item {
        Icon {
            anchors.centerIn: parent
            name: control.iconName
            color: control.iconColor
            mirror: control.mirrorsIcon
        }

    }

    background: Rectangle {
        radius: Style.radius
        color: control.down ? Style.pressed : control.hovered ? control.hoverColor : "transparent"

        FocusRing {
            control: control
        }

    }

}
