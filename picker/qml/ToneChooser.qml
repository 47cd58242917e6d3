// SPDX-License-Identifier: BSD-3-Clause
import Moodset 1.0
import MoodsetPicker 1.0
import QtQuick 2.15
import QtQuick.Templates 2.15 as T

// The sound files that the library knows.
ListView {
    id: list

    property url current

    signal chosen(url url)

    implicitHeight: Math.min(contentHeight, Style.touch * 5)
    clip: true
    boundsBehavior: Flickable.StopAtBounds
    Accessible.role: Accessible.List
    Accessible.name: qsTr("Tones")

    model: FileModel {
        id: files

        mimeType: "audio/*"
    }

    header: ChoiceRow {
        objectName: "standardTone"
        width: list.width
        text: qsTr("As it is now")
        checked: !String(list.current)
        onClicked: list.chosen("")
    }

    footer: Label {
        visible: files.count === 0
        width: list.width
        height: visible ? Style.touch : 0
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.Wrap
        text: files.status === FileModel.Ready ? qsTr("The library has no other tones.") : ""
        color: Style.subdued
    }

    delegate: ChoiceRow {
        width: list.width
        text: model.displayName || model.fileName
        checked: model.url === list.current
        onClicked: list.chosen(model.url)
    }

}
