// SPDX-License-Identifier: BSD-3-Clause
import MoodsetPicker 1.0
import QtQuick 2.15
import QtQuick.Templates 2.15 as T

// A switch.
T.Switch {
    id: control

    implicitWidth: Math.max(Style.touch, indicator.width) + Style.gap
    implicitHeight: Style.touch
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1 : 0.45
    Accessible.name: text

    indicator: Rectangle {
        x: (control.width - width) / 2
        y: (control.height - height) / 2
        width: Math.round(Style.knob * 1.72)
        height: Style.knob
        radius: height / 2
        color: control.checked ? Style.accent : Style.raised
        border.color: control.checked ? Style.accent : Style.outline
        border.width: 2

        Rectangle {
            x: control.visualPosition * (parent.width - width - 8) + 4
            y: 4
            width: parent.height - 8
            height: width
            radius: height / 2
            color: control.checked ? Style.accentInk : Style.subdued
        }

        FocusRing {
            control: control
            radius: height / 2
        }

    }

}
