// SPDX-License-Identifier: BSD-3-Clause
import MoodsetPicker 1.0
import QtQuick 2.15

// The four colours of a moodset, each with its contrast and a way to change it.
Section {
    id: section

    property var moodset
    property WallpaperColors colors
    property string editedRole
    readonly property var roles: [["highlightColor", qsTr("Highlight")], ["secondaryHighlightColor", qsTr("Second highlight")], ["primaryColor", qsTr("Text")], ["secondaryColor", qsTr("Second text")]]

    signal saved(var attributes)

    function save(role, color) {
        const attributes = {
        };
        attributes[role] = color;
        saved(attributes);
    }

    title: qsTr("Colours")

    Repeater {
        model: section.roles

        Column {
            width: parent.width

            ColorRow {
                width: parent.width
                role: modelData[0]
                name: modelData[1]
                value: section.moodset ? section.moodset[modelData[0]] : undefined
                colors: section.colors
                edited: section.editedRole === modelData[0]
                onToggled: section.editedRole = edited ? "" : modelData[0]
                onChosen: section.save(modelData[0], color)
            }

            Loader {
                active: section.editedRole === modelData[0]
                visible: active
                width: parent.width

                sourceComponent: ColorEditor {
                    value: section.moodset ? section.moodset[modelData[0]] : undefined
                    candidates: section.colors.candidates
                    onChosen: section.save(modelData[0], color)
                }

            }

        }

    }

}
