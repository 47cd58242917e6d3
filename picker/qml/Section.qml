// SPDX-License-Identifier: BSD-3-Clause
import MoodsetPicker 1.0
import QtQuick 2.15

// A part of a page, with a title.
Rectangle {
    id: section

    property string title
    default property alias content: column.data

    implicitHeight: column.implicitHeight + 2 * Style.margin
    radius: Style.radius
    color: Style.surface

    Column {
        id: column

        x: Style.margin
        y: Style.margin
        width: parent.width - 2 * Style.margin
        spacing: Style.gap

        Label {
            visible: text.length > 0
            width: parent.width
            text: section.title
            font.weight: Font.DemiBold
            wrapMode: Text.Wrap
            Accessible.role: Accessible.Heading
        }

    }

}
