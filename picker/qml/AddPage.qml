// SPDX-License-Identifier: BSD-3-Clause
import Moodset 1.0
import MoodsetPicker 1.0
import QtQuick 2.15
import QtQuick.Layouts 1.15

// The ways to a new moodset.
DetailPage {
    id: page

    signal entered(string text)
    signal browseRequested(bool installs)

    objectName: "addPage"
    title: qsTr("Add a moodset")
    hasPreview: false

    Section {
        width: parent.width
        title: qsTr("From a picture")

        Label {
            width: parent.width
            text: qsTr("Drop a file on the window, or choose one. Any of your pictures will do, too.")
            color: Style.subdued
            wrapMode: Text.Wrap
        }

        PushButton {
            objectName: "choosePicture"
            width: parent.width
            text: qsTr("Choose a picture")
            iconName: "pictures"
            onClicked: page.browseRequested(false)
        }

    }

    Section {
        width: parent.width
        title: qsTr("From an address")

        InputField {
            id: field

            objectName: "address"
            width: parent.width
            name: qsTr("Address of a picture")
            placeholderText: "https://"
            inputMethodHints: Qt.ImhUrlCharactersOnly
            onAccepted: page.entered(text)
        }

        PushButton {
            objectName: "openAddress"
            width: parent.width
            text: field.length ? qsTr("Look at it") : qsTr("Paste")
            iconName: "link"
            onClicked: page.entered(field.length ? field.text : Incoming.clipboardText())
        }

    }

    Section {
        width: parent.width
        title: qsTr("From a bundle")

        Label {
            width: parent.width
            text: qsTr("A bundle is a folder with a moodset file, its pictures and tones.")
            color: Style.subdued
            wrapMode: Text.Wrap
        }

        PushButton {
            objectName: "chooseBundle"
            width: parent.width
            text: qsTr("Choose a folder")
            iconName: "bundle"
            onClicked: page.browseRequested(true)
        }

        PushButton {
            width: parent.width
            text: qsTr("Look for new bundles")
            iconName: "refresh"
            onClicked: Notices.begin(Actions.refreshMoodsets(), "")
        }

    }

}
