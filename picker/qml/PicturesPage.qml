// SPDX-License-Identifier: BSD-3-Clause
import Moodset 1.0
import MoodsetPicker 1.0
import QtQuick 2.15

// The pictures by month, newest first, with a search for folders and dates.
FocusScope {
    id: page

    signal opened(string url)

    function search() {
        field.forceActiveFocus();
    }

    focus: true

    PageHeader {
        id: header

        width: parent.width
        title: qsTr("Pictures")
    }

    InputField {
        id: field

        objectName: "search"
        name: qsTr("Search by folder, name or date")
        placeholderText: qsTr("Folder, name or date such as 2024-03")
        anchors.top: header.bottom
        anchors.left: parent.left
        anchors.leftMargin: Style.margin
        width: Math.min(parent.width - 2 * Style.margin, Style.text * 36)
        inputMethodHints: Qt.ImhNoPredictiveText
        Keys.onDownPressed: list.forceActiveFocus()
    }

    ListView {
        id: list

        readonly property int columns: Math.max(3, Math.min(12, Math.floor(width / (Style.tile * 0.85))))
        readonly property int cell: Math.floor(width / columns)

        objectName: "pictures"
        anchors.top: field.bottom
        anchors.topMargin: Style.gap
        anchors.bottom: parent.bottom
        x: Style.margin - Style.gap / 4
        width: parent.width - 2 * x
        bottomMargin: Style.margin
        clip: true
        focus: true
        boundsBehavior: Flickable.StopAtBounds
        reuseItems: true
        Accessible.role: Accessible.List
        Accessible.name: qsTr("Pictures")

        model: PhotoRows {
            photos: photos
            columns: list.columns
        }

        delegate: PictureRow {
            width: list.width
            cell: list.cell
            // Neither the keyboard nor a screen reader may come to a row that waits to be used again.
            ListView.onPooled: visible = false
            ListView.onReused: visible = true
            onOpened: page.opened(url)
        }

    }

    Placeholder {
        visible: photos.status === PhotoModel.Loading && photos.count === 0
        waiting: true
        text: qsTr("Looking for your pictures …")
    }

    Placeholder {
        objectName: "noPictures"
        visible: photos.status === PhotoModel.Ready && photos.count === 0
        iconName: photos.search ? "search" : "pictures"
        title: photos.search ? qsTr("Nothing found") : qsTr("No pictures yet")
        text: photos.search ? qsTr("No picture has these words in its folder, name or date.") : qsTr("Pictures in your pictures folder show up here by themselves.")
        action: photos.search ? qsTr("Show all pictures") : ""
        onTriggered: field.clear()
    }

    Placeholder {
        visible: photos.status === PhotoModel.Error && photos.count === 0
        iconName: "warning"
        title: qsTr("Your pictures cannot be read")
        text: qsTr("The library of the theme service is missing or damaged.")
        detail: photos.error
        action: qsTr("Try again")
        onTriggered: photos.refresh()
    }

    PhotoModel {
        id: photos

        search: field.text
    }

}
