// SPDX-License-Identifier: BSD-3-Clause
import MoodsetPicker 1.0
import QtQuick 2.15
import QtQuick.Templates 2.15 as T

// A button with a text and maybe an icon. One button of a page is the important one.
T.Button {
    id: control

    property string iconName
    property bool important: false
    property bool dangerous: false
    // It shows that what it does has been done.
    property bool done: false
    readonly property color ink: done ? Style.accent : important ? Style.accentInk : dangerous ? Style.danger : Style.foreground

    implicitWidth: Math.max(Style.touch, textMetrics.advanceWidth + label.indent + 2 * Style.margin)
    implicitHeight: Math.max(Style.touch, label.implicitHeight + 2 * Style.gap)
    opacity: enabled || done ? 1 : 0.45
    leftPadding: Style.gap
    rightPadding: Style.gap
    focusPolicy: Qt.StrongFocus
    Accessible.name: text

    // The implicit width of the label changes while its width is set, which would be a binding loop.
    TextMetrics {
        id: textMetrics

        text: control.text
        font: label.font
    }

    contentItem: Item {
        Icon {
            readonly property real room: (parent.width - label.contentWidth - width - Style.gap) / 2

            visible: label.indent > 0
            x: control.mirrored ? parent.width - width - room : room
            y: (parent.height - height) / 2
            name: control.iconName
            color: control.ink
        }

        Label {
            id: label

            readonly property int indent: control.iconName ? Style.icon + Style.gap : 0

            anchors.fill: parent
            leftPadding: control.mirrored ? 0 : indent
            rightPadding: control.mirrored ? indent : 0
            text: control.text
            color: control.ink
            font.weight: Font.DemiBold
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
            Accessible.ignored: true
        }

    }

    background: Rectangle {
        radius: Style.radius
        border.width: control.done ? 2 : 0
        border.color: Style.accent
        color: control.done ? "transparent" : control.important ? (control.down ? Qt.darker(Style.accent, 1.15) : Style.accent) : control.down ? Style.pressed : Style.raised

        FocusRing {
            control: control
        }

    }

}
