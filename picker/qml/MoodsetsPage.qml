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
        cellHeight: Math.round(Math.min(cellWidth * 1.3, height * 0.7)) + Style.touch
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

    // Most libraries are read before anyone could see that there is something to wait for.
    Timer {
        id: patience

        interval: 300
        running: moodsets.status === MoodsetModel.Loading
    }

    Loader {
        id: placeholder

        anchors.fill: parent
        active: moodsets.count === 0 && !patience.running && moodsets.status !== MoodsetModel.Null
        Component.onCompleted: setSource("MoodsetsState.qml", {
            "moodsets": moodsets
        })
    }

    Connections {
        function onAddRequested() {
            page.addRequested();
        }

        target: placeholder.item
    }

    MoodsetModel {
        id: moodsets
    }

}
