// SPDX-License-Identifier: BSD-3-Clause
import MoodsetPicker 1.0
import QtQuick 2.15
import QtQuick.Templates 2.15 as T

// The name of a month, or some pictures beside each other.
Item {
    id: row

    property int cell

    signal opened(string url)

    height: model.title ? Style.touch : cell

    Label {
        visible: model.title.length > 0
        anchors.fill: parent
        anchors.margins: Style.gap / 4
        anchors.topMargin: Style.gap
        verticalAlignment: Text.AlignVCenter
        text: model.title
        font.weight: Font.DemiBold
        Accessible.role: Accessible.Heading
    }

    Row {
        anchors.fill: parent

        Repeater {
            model: pictures

            T.AbstractButton {
                id: picture

                width: row.cell
                height: row.cell
                padding: Style.gap / 4
                focusPolicy: Qt.StrongFocus
                text: modelData.name
                Accessible.role: Accessible.Button
                Accessible.name: text
                onClicked: row.opened(modelData.url)
                Keys.onReturnPressed: clicked()

                contentItem: Wallpaper {
                    source: modelData.thumbnail || ""

                    FocusRing {
                        control: picture
                        anchors.margins: 0
                    }

                }

            }

        }

    }

}
