// SPDX-License-Identifier: BSD-3-Clause
import MoodsetPicker 1.0
import QtQuick 2.15
import QtQuick.Templates 2.15 as T

// One of the tabs, in a bar below the page or beside it.
T.TabButton {
    id: control

    property string iconName
    property bool wide: false
    readonly property color ink: checked ? Style.accent : Style.subdued

    implicitHeight: wide ? Style.touch : Style.icon + Math.round(Style.smallText * 1.4) + 2 * Style.gap
    focusPolicy: Qt.StrongFocus
    Accessible.name: text
    Accessible.role: Accessible.PageTab
    Accessible.onPressAction: clicked()

    contentItem: Item {
        Icon {
            id: icon

            x: control.wide ? (control.mirrored ? parent.width - width - Style.margin : Style.margin) : (parent.width - width) / 2
            y: control.wide ? (parent.height - height) / 2 : Style.gap
            name: control.iconName
            color: control.ink
        }

        Label {
            x: control.wide ? (control.mirrored ? 0 : icon.x + icon.width + Style.margin) : 0
            y: control.wide ? (parent.height - height) / 2 : parent.height - height - Style.gap / 2
            width: control.wide ? parent.width - icon.width - 2 * Style.margin - (control.mirrored ? 0 : Style.margin) : parent.width
            text: control.text
            color: control.ink
            font.pixelSize: control.wide ? Style.text : Style.smallText
            font.weight: control.checked ? Font.DemiBold : Font.Normal
            horizontalAlignment: control.wide ? Text.AlignLeft : Text.AlignHCenter
            Accessible.ignored: true
        }

    }

    background: Rectangle {
        radius: Style.radius
        color: control.wide && control.checked ? Style.raised : control.down ? Style.pressed : "transparent"

        FocusRing {
            control: control
            anchors.margins: 2
        }

    }

}
