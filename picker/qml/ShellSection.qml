// SPDX-License-Identifier: BSD-3-Clause
import Moodset 1.0
import MoodsetPicker 1.0
import QtQuick 2.15

// What of the active moodset reaches the shells and services of this session. Not there where there
// is no bridge that could tell.
Section {
    id: section

    readonly property bool known: bridge.known

    title: qsTr("What reaches this session")

    Label {
        objectName: "noShell"
        visible: bridge.shells.length === 0
        width: parent.width
        text: bridge.running ? qsTr("No shell or service that the bridge serves is running.") : qsTr("The bridge to shells does not run, so it hands nothing on.")
        color: Style.subdued
        wrapMode: Text.Wrap
    }

    Repeater {
        model: bridge.shells

        Item {
            objectName: "shell"
            width: parent.width
            height: texts.height + Style.gap
            Accessible.role: Accessible.StaticText
            Accessible.name: modelData.name + ": " + modelData.text

            Icon {
                id: mark

                x: LayoutMirroring.enabled ? parent.width - width : 0
                y: (line.height - height) / 2
                name: modelData.failed ? "warning" : "check"
                color: modelData.failed ? Style.danger : Style.accent
            }

            Column {
                id: texts

                x: LayoutMirroring.enabled ? 0 : mark.width + Style.margin
                width: parent.width - mark.width - Style.margin

                Label {
                    id: line

                    width: parent.width
                    text: modelData.name
                    wrapMode: Text.Wrap
                    Accessible.ignored: true
                }

                Label {
                    width: parent.width
                    text: modelData.text
                    color: modelData.failed ? Style.danger : Style.subdued
                    font.pixelSize: Style.smallText
                    wrapMode: Text.Wrap
                    Accessible.ignored: true
                }

            }

        }

    }

    BridgeStatus {
        id: bridge
    }

    Connections {
        function onChanged() {
            bridge.askSoon();
        }

        target: Theme
    }

}
