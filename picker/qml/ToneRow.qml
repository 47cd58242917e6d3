// SPDX-License-Identifier: BSD-3-Clause
import MoodsetPicker 1.0
import QtQuick 2.15
import QtQuick.Layouts 1.15
import QtQuick.Templates 2.15 as T

// One tone: its file, a button that plays it, and whether it is on. A list of other files opens
// below it.
Column {
    id: row

    property string tone
    property string name
    property var file
    property bool isOn
    readonly property bool hasFile: !!file && String(file.url).length > 0

    signal switched(bool isOn)
    signal chosen(url url)

    RowLayout {
        width: parent.width
        spacing: Style.gap / 2

        T.AbstractButton {
            id: button

            objectName: row.tone
            implicitHeight: Math.max(Style.touch, texts.implicitHeight + Style.gap)
            Layout.fillWidth: true
            focusPolicy: Qt.StrongFocus
            Accessible.name: qsTr("Choose the tone: %1").arg(row.name)
            onClicked: chooser.active = !chooser.active

            contentItem: Item {
                Column {
                    id: texts

                    width: parent.width
                    anchors.verticalCenter: parent.verticalCenter

                    Label {
                        width: parent.width
                        text: row.name
                        fontSizeMode: Text.HorizontalFit
                        minimumPixelSize: Style.smallText
                        Accessible.ignored: true
                    }

                    Label {
                        width: parent.width
                        text: row.hasFile ? row.file.displayName || row.file.fileName : qsTr("As it is now")
                        color: Style.subdued
                        font.pixelSize: Style.smallText
                    }

                }

            }

            background: Rectangle {
                radius: Style.radius
                color: button.down ? Style.raised : "transparent"

                FocusRing {
                    control: button
                    anchors.margins: 0
                }

            }

        }

        PlayButton {
            visible: row.hasFile
            file: row.hasFile ? row.file.url : ""
            name: row.name
        }

        Toggle {
            objectName: row.tone + "Switch"
            text: qsTr("%1 is on").arg(row.name)
            checked: row.isOn
            onToggled: row.switched(checked)
        }

    }

    Loader {
        id: chooser

        active: false
        visible: active
        width: parent.width

        sourceComponent: ToneChooser {
            current: row.hasFile ? row.file.url : ""
            onChosen: {
                chooser.active = false;
                row.chosen(url);
            }
        }

    }

}
