// SPDX-License-Identifier: BSD-3-Clause
import QtQuick 2.15

// A page of settings of an application.
Item {
    id: application

    property color primary
    property color secondary
    property color highlight
    property color secondaryHighlight

    anchors.fill: parent

    PreviewText {
        x: 12
        y: 22
        width: parent.width - 24
        text: qsTr("Sounds")
        color: application.highlight
        font.pixelSize: 18
        horizontalAlignment: Text.AlignRight
    }

    Column {
        x: 12
        y: 62
        width: parent.width - 24
        spacing: 12

        Repeater {
            model: [[qsTr("Ringer"), qsTr("Calls and alarms")], [qsTr("Vibration"), qsTr("While the ringer is off")]]

            Item {
                width: parent.width
                height: 30

                PreviewText {
                    width: parent.width - 34
                    text: modelData[0]
                    color: application.primary
                }

                PreviewText {
                    y: 14
                    width: parent.width - 34
                    text: modelData[1]
                    color: application.secondary
                    font.pixelSize: 8
                }

                Rectangle {
                    x: parent.width - width
                    y: 6
                    width: 26
                    height: 14
                    radius: 7
                    color: index ? application.secondary : application.secondaryHighlight

                    Rectangle {
                        x: index ? 2 : 14
                        y: 2
                        width: 10
                        height: 10
                        radius: 5
                        color: index ? application.primary : application.highlight
                    }

                }

            }

        }

        PreviewText {
            width: parent.width
            text: qsTr("Tones")
            color: application.secondaryHighlight
            font.weight: Font.DemiBold
            horizontalAlignment: Text.AlignRight
        }

        Repeater {
            model: [[qsTr("Ringtone"), qsTr("Tide")], [qsTr("Messages"), qsTr("Gull")], [qsTr("Calendar"), qsTr("Buoy")]]

            Item {
                width: parent.width
                height: 24

                PreviewText {
                    width: parent.width
                    text: modelData[0]
                    color: index ? application.primary : application.highlight
                }

                PreviewText {
                    y: 13
                    width: parent.width
                    text: modelData[1]
                    color: index ? application.secondary : application.secondaryHighlight
                    font.pixelSize: 8
                }

            }

        }

    }

    Rectangle {
        x: 12
        y: parent.height - 44
        width: parent.width - 24
        height: 28
        radius: 9
        color: Qt.rgba(application.highlight.r, application.highlight.g, application.highlight.b, 0.3)

        PreviewText {
            anchors.fill: parent
            verticalAlignment: Text.AlignVCenter
            horizontalAlignment: Text.AlignHCenter
            text: qsTr("Save")
            color: application.highlight
        }

    }

}
