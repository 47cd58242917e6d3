// SPDX-License-Identifier: BSD-3-Clause
import MoodsetPicker 1.0
import QtQuick 2.15

// Shows which control has the keyboard.
Rectangle {
    property Item control: parent

    visible: control.visualFocus
    anchors.fill: parent
    anchors.margins: -2
    radius: Style.radius + 2
    color: "transparent"
    border.color: Style.accent
    border.width: 2
}
