// SPDX-License-Identifier: BSD-3-Clause
import Moodset 1.0
import MoodsetPicker 1.0
import QtQuick 2.15

// All moodsets, as tiles.
FocusScope {
    id: page

    signal opened(var contentId)
    signal addRequested()

    PageHeader {
        id: header

        width: parent.width
        title: qsTr("Moodsets")

        IconButton {
            objectName: "add"
            text: qsTr("Add a moodset")
            iconName: "add"
            onClicked: page.addRequested()
        }

    }

    GridView {
        id: grid

        readonly property int columns: Math.max(1, Math.min(8, Math.floor(width / Style.tile)))

        objectName: "moodsets"
        anchors.top: header.bottom
        anchors.bottom: parent.bottom
        x: Style.margin - Style.gap / 2
        width: parent.width - 2 * x
        bottomMargin: Style.margin
        cellWidth: Math.floor(width / columns)
        cellHeight: Math.min(cellWidth * 1.3, height * 0.7) + Style.touch
        clip: true
        focus: true
        model: moodsets
        keyNavigationEnabled: true
        // A grid from right to left keeps its content where it was before it changed its width.
        onWidthChanged: contentX = 0
        boundsBehavior: Flickable.StopAtBounds
        Accessible.role: Accessible.List
        Accessible.name: qsTr("Moodsets")

        delegate: MoodsetTile {
            width: grid.cellWidth
            height: grid.cellHeight
            onOpened: page.opened(model.contentId)
        }

    }

    Placeholder {
        visible: moodsets.status === MoodsetModel.Loading && moodsets.count === 0
        waiting: true
        text: qsTr("Looking for your moodsets …")
    }

    Placeholder {
        visible: moodsets.status === MoodsetModel.Ready && moodsets.count === 0
        iconName: "moodsets"
        title: qsTr("No moodsets yet")
        text: qsTr("Make one of any picture: its colours become those of your phone.")
        action: qsTr("Add a moodset")
        onTriggered: page.addRequested()
    }

    Placeholder {
        objectName: "moodsetsError"
        visible: moodsets.status === MoodsetModel.Error && moodsets.count === 0
        iconName: "warning"
        title: qsTr("Your moodsets cannot be read")
        text: qsTr("The theme service has no library yet, or has lost it.")
        detail: moodsets.error
        action: qsTr("Try again")
        onTriggered: {
            Notices.begin(Actions.refreshMoodsets(), "");
            moodsets.refresh();
        }
    }

    MoodsetModel {
        id: moodsets
    }

}
