// SPDX-License-Identifier: BSD-3-Clause
import MoodsetPicker 1.0
import QtQuick 2.15

// A home screen: a clock, two messages and applications.
Item {
    id: home

    property color primary
    property color secondary
    property color highlight
    property color secondaryHighlight

    anchors.fill: parent

    PreviewText {
        y: parent.height * 0.08
        width: parent.width
        text: "10:24"
        color: home.primary
        font.pixelSize: 44
        font.weight: Font.Light
        horizontalAlignment: Text.AlignHCenter
    }

    PreviewText {
        y: parent.height * 0.08 + 56
        width: parent.width
        text: qsTr("Saturday, 21 November")
        color: home.secondary
        horizontalAlignment: Text.AlignHCenter
    }

    Column {
        x: 12
        y: parent.height * 0.08 + 92
        width: parent.width - 24
        spacing: 6

        Repeater {
            model: [[qsTr("Mia"), qsTr("See you at the pier?")], [qsTr("Walk by the sea"), qsTr("11:00, north beach")]]

            Rectangle {
                width: parent.width
                height: 38
                radius: 9
                color: "#70000000"

                Rectangle {
                    x: 8
                    y: 8
                    width: 22
                    height: 22
                    radius: 11
                    color: home.secondaryHighlight
                }

                PreviewText {
                    x: 38
                    y: 5
                    width: parent.width - 44
                    text: modelData[0]
                    color: home.highlight
                    font.weight: Font.DemiBold
                }

                PreviewText {
                    x: 38
                    y: 20
                    width: parent.width - 44
                    text: modelData[1]
                    color: home.primary
                }

            }

        }

    }

    Grid {
        anchors.horizontalCenter: parent.horizontalCenter
        y: parent.height - height - 24
        columns: 4
        spacing: 12

        Repeater {
            model: ["tone", "pictures", "link", "search", "star", "folder", "volume", "edit"]

            Rectangle {
                width: 28
                height: 28
                radius: 9
                color: "#40ffffff"

                Icon {
                    anchors.centerIn: parent
                    width: 16
                    sourceSize: Qt.size(48, 48)
                    name: modelData
                    color: home.primary
                }

            }

        }

    }

}
