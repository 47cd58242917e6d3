// SPDX-License-Identifier: BSD-3-Clause
import Moodset 1.0
import MoodsetPicker 1.0
import QtQuick 2.15

// A picture before it is a moodset: what it would look like, and then the choice.
DetailPage {
    id: page

    property url url
    readonly property bool isBusy: Notices.busy.indexOf(String(url)) >= 0

    signal made()

    function take(outcome) {
        if (outcome.succeeded)
            made();

    }

    objectName: "picturePage"
    title: qsTr("New moodset")
    hasPreview: inspection.status === PicturePreview.Ready && !!inspection.look.homeWallpaper

    PicturePreview {
        id: inspection

        picture: page.url
    }

    Item {
        visible: inspection.status !== PicturePreview.Ready
        width: parent.width
        height: Math.max(Style.touch * 6, page.viewHeight - 4 * Style.margin)

        Placeholder {
            objectName: "pictureFault"
            waiting: inspection.status === PicturePreview.Loading
            iconName: "warning"
            title: waiting ? "" : qsTr("No moodset can be made of this")
            text: waiting ? qsTr("Looking at the picture …") : Incoming.fileName(page.url)
            detail: waiting ? "" : inspection.error
        }

    }

    Section {
        visible: inspection.status === PicturePreview.Ready
        width: parent.width
        title: Incoming.fileName(page.url)

        Label {
            width: parent.width
            visible: inspection.status === PicturePreview.Ready && !inspection.look.homeWallpaper
            text: qsTr("The picture is on the network. It is downloaded into your pictures folder when the moodset is made.")
            color: Style.subdued
            wrapMode: Text.Wrap
        }

        PushButton {
            objectName: "setPicture"
            width: parent.width
            important: true
            enabled: inspection.status === PicturePreview.Ready && !page.isBusy
            text: page.isBusy ? qsTr("Please wait …") : qsTr("Make it and apply it")
            iconName: page.isBusy ? "" : "check"
            onClicked: Notices.begin(Actions.setMoodset(page.url, page.take), String(page.url))
        }

        PushButton {
            objectName: "createPicture"
            width: parent.width
            enabled: inspection.status === PicturePreview.Ready && !page.isBusy
            text: qsTr("Make it only")
            iconName: "add"
            onClicked: Notices.begin(Actions.createMoodset(page.url, page.take), String(page.url))
        }

        Spinner {
            visible: page.isBusy
            anchors.horizontalCenter: parent.horizontalCenter
        }

    }

    preview: PhonePreview {
        visible: inspection.status === PicturePreview.Ready && !!inspection.look.homeWallpaper
        look: inspection.look
    }

}
