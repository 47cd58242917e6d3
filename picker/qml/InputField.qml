// SPDX-License-Identifier: BSD-3-Clause
import MoodsetPicker 1.0
import QtQuick 2.15
import QtQuick.Templates 2.15 as T

// A field for one line of text.
T.TextField {
    id: control

    property string name

    implicitWidth: 200
    implicitHeight: Math.max(Style.touch, contentHeight + 2 * Style.gap)
    leftPadding: Style.margin
    rightPadding: Style.margin
    topPadding: Style.gap
    bottomPadding: Style.gap
    verticalAlignment: TextInput.AlignVCenter
    horizontalAlignment: TextInput.AlignLeft
    font.pixelSize: Style.text
    color: Style.foreground
    selectionColor: Style.accent
    selectedTextColor: Style.accentInk
    placeholderTextColor: Style.subdued
    selectByMouse: true
    clip: true
    Accessible.name: name

    background: Rectangle {
        radius: Style.radius
        color: Style.surface
        border.width: control.activeFocus ? 2 : 1
        border.color: control.activeFocus ? Style.accent : Style.outline

        Label {
            anchors.fill: parent
            anchors.leftMargin: Style.margin
            anchors.rightMargin: Style.margin
            verticalAlignment: Text.AlignVCenter
            text: control.placeholderText
            color: Style.subdued
            visible: !control.length && !control.preeditText
            Accessible.ignored: true
        }

    }

}
