// SPDX-License-Identifier: BSD-3-Clause
import Moodset 1.0
import MoodsetPicker 1.0
import QtQuick 2.15

// The folder of a bundle: installs it, and says why it was refused.
DetailPage {
    id: page

    property url url
    property var faults: []
    readonly property bool isBusy: Notices.busy.indexOf(String(url)) >= 0

    signal made()

    function take(outcome) {
        faults = outcome.succeeded ? [] : Incoming.bundleFaults(url, outcome.refused || []);
        if (outcome.succeeded)
            made();

    }

    objectName: "bundlePage"
    title: qsTr("Install a bundle")
    hasPreview: false

    Section {
        width: parent.width
        title: Incoming.fileName(page.url)

        PushButton {
            objectName: "install"
            width: parent.width
            important: true
            enabled: !page.isBusy
            text: page.isBusy ? qsTr("Installing …") : qsTr("Install")
            iconName: "bundle"
            onClicked: Notices.begin(Actions.installPackage(page.url, page.take), String(page.url))
        }

        Repeater {
            model: page.faults

            Label {
                objectName: "fault"
                width: parent.width
                text: modelData
                color: Style.danger
                wrapMode: Text.Wrap
            }

        }

    }

}
