// SPDX-License-Identifier: BSD-3-Clause
import Moodset 1.0
import MoodsetPicker 1.0
import QtQuick 2.15
import QtQuick.Layouts 1.15

// What has come of the last call, with a way to undo it.
Rectangle {
    id: bar

    readonly property color ink: Style.dark ? "#16181d" : "#f3f4f6"

    objectName: "notice"
    implicitHeight: row.implicitHeight + Style.gap
    radius: Style.radius
    color: Style.dark ? "#e7e9ee" : "#23262d"
    Accessible.role: Accessible.AlertMessage
    Accessible.name: Notices.text

    GridLayout {
        id: row

        anchors.fill: parent
        anchors.leftMargin: Style.margin
        columns: bar.width > Style.text * 20 ? 3 : 2
        columnSpacing: Style.gap
        rowSpacing: 0

        Icon {
            visible: Notices.isError
            name: "warning"
            color: Style.dark ? "#a8261c" : "#ffb4ab"
        }

        Label {
            text: Notices.text
            color: bar.ink
            wrapMode: Text.Wrap
            maximumLineCount: 6
            Layout.fillWidth: true
            Layout.columnSpan: row.columns - (row.columns === 3 ? 1 : 0) - (Notices.isError ? 1 : 0)
            Layout.topMargin: Style.gap
            Layout.bottomMargin: Style.gap
        }

        Row {
            Layout.alignment: Qt.AlignRight
            Layout.columnSpan: row.columns === 2 ? 2 : 1

            IconButton {
                objectName: "undo"
                visible: !!Notices.undo
                text: qsTr("Undo")
                iconName: "undo"
                iconColor: bar.ink
                hoverColor: "#30808080"
                onClicked: Notices.begin(Actions.undo(Notices.undo), "")
            }

            IconButton {
                objectName: "closeNotice"
                text: qsTr("Close this message")
                iconName: "close"
                iconColor: bar.ink
                hoverColor: "#30808080"
                onClicked: Notices.clear()
            }

        }

    }

}
