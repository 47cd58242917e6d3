// SPDX-License-Identifier: BSD-3-Clause
import MoodsetPicker 1.0
import QtQuick 2.15
import QtQuick.Layouts 1.15
import QtQuick.Templates 2.15 as T

// One colour: its name, how well it can be read, and a button that mends it where it cannot.
GridLayout {
    id: row

    property string role
    property string name
    property var value
    property WallpaperColors colors
    property bool edited: false
    readonly property bool judged: colors.ready && value !== undefined
    readonly property bool readable: judged && colors.isEnough(value)

    signal toggled()
    signal chosen(color color)

    columns: width < Style.text * 16 ? 1 : 2
    columnSpacing: Style.gap
    rowSpacing: 0

    T.AbstractButton {
        id: button

        objectName: row.role
        implicitHeight: Math.max(Style.touch, texts.implicitHeight + Style.gap)
        Layout.fillWidth: true
        focusPolicy: Qt.StrongFocus
        Accessible.name: qsTr("Change the colour: %1").arg(row.name)
        onClicked: row.toggled()

        contentItem: RowLayout {
            spacing: Style.gap * 1.5

            Rectangle {
                implicitWidth: Style.touch - Style.gap
                implicitHeight: implicitWidth
                radius: implicitWidth / 2
                color: row.value === undefined ? "transparent" : row.value
                border.width: 2
                border.color: row.edited ? Style.accent : Style.outline
            }

            Column {
                id: texts

                Layout.fillWidth: true

                Label {
                    width: parent.width
                    text: row.name
                    wrapMode: Text.Wrap
                    Accessible.ignored: true
                }

                Label {
                    width: parent.width
                    visible: row.judged
                    text: row.judged ? (row.readable ? qsTr("Contrast %1 : 1") : qsTr("Contrast %1 : 1, hard to read")).arg(row.colors.contrast(row.value).toLocaleString(Qt.locale(), "f", 1)) : ""
                    color: row.readable ? Style.subdued : Style.danger
                    font.pixelSize: Style.smallText
                    wrapMode: Text.Wrap
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

    PushButton {
        objectName: row.role + "Mend"
        visible: row.judged && !row.readable
        text: qsTr("Mend")
        Layout.alignment: Qt.AlignRight
        Accessible.name: qsTr("Mend the contrast: %1").arg(row.name)
        onClicked: row.chosen(row.colors.mended(row.value))
    }

}
