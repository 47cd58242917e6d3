// SPDX-License-Identifier: BSD-3-Clause
import Moodset 1.0
import MoodsetPicker 1.0
import QtQuick 2.15
import QtQuick.Templates 2.15 as T

// A moodset: its wallpaper, colours and name, whether it is a favourite or the active one, and a
// button that applies it.
T.AbstractButton {
    id: tile

    readonly property bool isActive: model.url == Theme.activeMoodset
    readonly property bool isBusy: Notices.busy.indexOf(String(model.url)) >= 0

    signal opened()

    focusPolicy: Qt.StrongFocus
    padding: Style.gap / 2
    Accessible.role: Accessible.Button
    Accessible.name: isActive ? qsTr("%1, active").arg(model.name) : model.name
    onClicked: opened()
    Keys.onReturnPressed: opened()
    Keys.onEnterPressed: opened()

    contentItem: Rectangle {
        radius: Style.radius
        color: Style.surface

        Wallpaper {
            id: picture

            x: Style.gap / 2
            y: Style.gap / 2
            width: parent.width - Style.gap
            height: parent.height - Style.touch - Style.gap / 2
            source: model.thumbnail
            frame: Style.surface
        }

        FocusRing {
            control: tile
            visible: tile.activeFocus && Style.keyboard
            anchors.margins: 0
        }

        Swatches {
            x: LayoutMirroring.enabled ? picture.x + picture.width - width - Style.gap : picture.x + Style.gap
            y: picture.y + picture.height - height - Style.gap
            moodset: model
        }

        // Few tiles have one of these, and a list of tiles comes sooner without them.
        Loader {
            anchors.fill: parent
            active: tile.isActive

            sourceComponent: Rectangle {
                radius: Style.radius
                color: "transparent"
                border.width: 2
                border.color: Style.accent
            }

        }

        Loader {
            active: tile.isActive
            x: LayoutMirroring.enabled ? picture.x + picture.width - width - Style.gap : picture.x + Style.gap
            y: picture.y + Style.gap

            sourceComponent: Badge {
                text: qsTr("Active")
            }

        }

        Loader {
            active: model.favorite
            x: LayoutMirroring.enabled ? picture.x + Style.gap : picture.x + picture.width - width - Style.gap
            y: picture.y + Style.gap

            sourceComponent: Rectangle {
                width: Style.icon + Style.gap
                height: width
                radius: width / 2
                color: "#b0000000"

                Icon {
                    anchors.centerIn: parent
                    name: "star-filled"
                    color: "#ffcc4d"
                }

            }

        }

        Label {
            x: LayoutMirroring.enabled ? apply.width : Style.gap * 1.5
            y: parent.height - Style.touch
            width: parent.width - Style.touch - Style.gap * 1.5
            height: Style.touch
            verticalAlignment: Text.AlignVCenter
            text: model.name
            Accessible.ignored: true
        }

        IconButton {
            id: apply

            x: LayoutMirroring.enabled ? 0 : parent.width - width
            y: parent.height - height
            visible: !tile.isBusy
            enabled: !tile.isActive
            text: tile.isActive ? qsTr("%1 is active").arg(model.name) : qsTr("Apply %1").arg(model.name)
            iconName: "check"
            iconColor: tile.isActive ? Style.accent : Style.foreground
            opacity: 1
            onClicked: Notices.begin(Actions.setMoodset(model.url), model.url)
        }

        Loader {
            anchors.centerIn: apply
            active: tile.isBusy

            sourceComponent: Spinner {
                dot: 6
            }

        }

    }

}
