// SPDX-License-Identifier: BSD-3-Clause
import MoodsetPicker 1.0
import QtQuick 2.15

// What a page shows in place of its content while there is none.
Column {
    id: placeholder

    property string iconName
    property string title
    property string text
    // Why it is so, for those who want to know.
    property string detail
    property bool waiting: false
    property string action

    signal triggered()

    spacing: Style.margin
    width: Math.min(Style.text * 26, parent.width - 4 * Style.margin)
    anchors.centerIn: parent

    Spinner {
        visible: placeholder.waiting
        anchors.horizontalCenter: parent.horizontalCenter
    }

    Rectangle {
        visible: !placeholder.waiting
        width: Style.touch * 1.75
        height: width
        radius: width / 2
        color: Style.raised
        anchors.horizontalCenter: parent.horizontalCenter

        Icon {
            anchors.centerIn: parent
            width: parent.width / 2
            name: placeholder.iconName
            color: Style.subdued
        }

    }

    Label {
        visible: text.length > 0
        text: placeholder.title
        width: parent.width
        font.pixelSize: Style.titleText
        font.weight: Font.DemiBold
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignHCenter
    }

    Label {
        visible: text.length > 0
        text: placeholder.text
        width: parent.width
        color: Style.subdued
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignHCenter
    }

    Label {
        visible: text.length > 0
        text: placeholder.detail.charAt(0).toUpperCase() + placeholder.detail.slice(1)
        width: parent.width
        color: Style.subdued
        font.pixelSize: Style.smallText
        wrapMode: Text.Wrap
        maximumLineCount: 6
        horizontalAlignment: Text.AlignHCenter
    }

    PushButton {
        visible: text.length > 0
        text: placeholder.action
        // Without a name there is nothing to tell of, not even that it is hidden.
        Accessible.ignored: text.length === 0
        width: Math.min(implicitWidth, parent.width)
        anchors.horizontalCenter: parent.horizontalCenter
        onClicked: placeholder.triggered()
    }

}
