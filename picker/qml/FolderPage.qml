// SPDX-License-Identifier: BSD-3-Clause
import MoodsetPicker 1.0
import Qt.labs.folderlistmodel 2.15
import QtQuick 2.15

// The folders and pictures of the disk, to choose one of.
FocusScope {
    id: page

    property bool installs: false
    property url folder: Incoming.picturesFolder()

    signal back()
    signal chosen(string url)

    objectName: "folderPage"

    PageHeader {
        id: header

        width: parent.width
        canGoBack: true
        title: page.installs ? qsTr("Choose a folder") : qsTr("Choose a picture")
        onBack: page.back()

        IconButton {
            text: qsTr("The folder above")
            iconName: "up"
            enabled: String(files.parentFolder).length > 0
            onClicked: page.folder = files.parentFolder
        }

    }

    Label {
        id: path

        anchors.top: header.bottom
        x: Style.margin
        width: parent.width - 2 * Style.margin
        text: decodeURIComponent(String(page.folder)).replace("file://", "")
        elide: Text.ElideLeft
        color: Style.subdued
        font.pixelSize: Style.smallText
    }

    ListView {
        id: list

        objectName: "files"
        anchors.top: path.bottom
        anchors.topMargin: Style.gap
        anchors.bottom: install.visible ? install.top : parent.bottom
        anchors.bottomMargin: Style.gap
        x: Style.gap
        width: parent.width - 2 * Style.gap
        clip: true
        focus: true
        boundsBehavior: Flickable.StopAtBounds
        Accessible.role: Accessible.List
        Accessible.name: qsTr("Folders and pictures")

        model: FolderListModel {
            id: files

            folder: page.folder
            showDirsFirst: true
            showFiles: !page.installs
            nameFilters: ["*.jpg", "*.jpeg", "*.png", "*.webp", "*.tif", "*.tiff", "*.gif", "*.bmp", "*.ppm", "*.pgm", "*.pbm", "*.heic", "*.heif", "*.avif"]
            caseSensitive: false
        }

        delegate: ChoiceRow {
            width: list.width
            text: fileName
            iconName: fileIsDir ? "folder" : "pictures"
            onClicked: {
                if (fileIsDir)
                    page.folder = fileUrl;
                else
                    page.chosen(fileUrl);
            }
        }

    }

    Placeholder {
        visible: files.count === 0 && files.status === FolderListModel.Ready
        iconName: "folder"
        title: qsTr("Nothing to choose here")
    }

    PushButton {
        id: install

        objectName: "chooseFolder"
        visible: page.installs
        text: qsTr("Choose this folder")
        important: true
        width: Math.min(Style.column, parent.width - 2 * Style.margin)
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        anchors.bottomMargin: Style.margin
        onClicked: page.chosen(page.folder)
    }

}
