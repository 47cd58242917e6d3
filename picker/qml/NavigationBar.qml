// SPDX-License-Identifier: BSD-3-Clause
import MoodsetPicker 1.0
import QtQuick 2.15

// The two tabs: below the page, or beside it where there is room.
Rectangle {
    id: bar

    property bool wide: false
    property int current: 0

    signal chosen(int index)

    implicitWidth: Math.max(208, Style.text * 13)
    implicitHeight: grid.implicitHeight + (wide ? 0 : Style.gap)
    color: Style.surface
    Accessible.role: Accessible.PageTabList

    Grid {
        id: grid

        readonly property int cell: bar.wide ? bar.width - 2 * Style.gap : bar.width / 2

        x: bar.wide ? Style.gap : 0
        y: bar.wide ? Style.touch + 2 * Style.gap : Style.gap / 2
        columns: bar.wide ? 1 : 2
        spacing: bar.wide ? Style.gap / 2 : 0

        NavigationButton {
            objectName: "moodsetsTab"
            width: grid.cell
            wide: bar.wide
            text: qsTr("Moodsets")
            iconName: "moodsets"
            checked: bar.current === 0
            autoExclusive: true
            onClicked: bar.chosen(0)
        }

        NavigationButton {
            objectName: "picturesTab"
            width: grid.cell
            wide: bar.wide
            text: qsTr("Pictures")
            iconName: "pictures"
            checked: bar.current === 1
            autoExclusive: true
            onClicked: bar.chosen(1)
        }

    }

    Label {
        visible: bar.wide
        x: Style.margin
        width: parent.width - 2 * Style.margin
        height: Style.touch + Style.gap
        verticalAlignment: Text.AlignVCenter
        text: qsTr("Moodset Picker")
        font.weight: Font.DemiBold
        font.pixelSize: Style.titleText
    }

    Rectangle {
        width: bar.wide ? 1 : parent.width
        height: bar.wide ? parent.height : 1
        x: bar.wide && !bar.LayoutMirroring.enabled ? parent.width - 1 : 0
        color: Style.raised
    }

}
