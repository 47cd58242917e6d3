// SPDX-License-Identifier: BSD-3-Clause
import MoodsetPicker 1.0
import QtQuick 2.15
import QtQuick.Layouts 1.15

// Applies a moodset, makes it a favourite and renames it.
Section {
    id: head

    property var moodset
    property bool isActive: false
    property bool isBusy: false

    signal applied()
    signal saved(var attributes)

    function rename() {
        if (field.text.trim() && field.text !== moodset.name)
            saved({
            "displayName": field.text.trim()
        });
        else
            field.text = Qt.binding(() => {
            return head.moodset ? head.moodset.name : "";
        });
    }

    RowLayout {
        width: parent.width
        spacing: Style.gap

        PushButton {
            objectName: "apply"
            Layout.fillWidth: true
            important: !head.isActive
            done: head.isActive && !head.isBusy
            enabled: !head.isBusy && !head.isActive
            text: head.isBusy ? qsTr("Applying …") : head.isActive ? qsTr("Active") : qsTr("Apply")
            iconName: head.isBusy ? "" : "check"
            onClicked: head.applied()
        }

        IconButton {
            readonly property bool isFavorite: !!head.moodset && head.moodset.favorite

            objectName: "favorite"
            text: isFavorite ? qsTr("Take from the favourites") : qsTr("Make a favourite")
            iconName: isFavorite ? "star-filled" : "star"
            iconColor: isFavorite ? Style.star : Style.foreground
            onClicked: head.saved({
                "favorite": !isFavorite
            })
        }

    }

    Spinner {
        visible: head.isBusy
        anchors.horizontalCenter: parent.horizontalCenter
    }

    InputField {
        id: field

        objectName: "name"
        width: parent.width
        name: qsTr("Name")
        placeholderText: qsTr("Name")
        maximumLength: 200
        text: head.moodset ? head.moodset.name : ""
        onEditingFinished: head.rename()
    }

}
