// SPDX-License-Identifier: BSD-3-Clause
import MoodsetPicker 1.0
import QtQuick 2.15
import QtQuick.Layouts 1.15

// The top of a page: a way back where there is one, a title, and buttons.
Item {
    id: header

    property string title
    property bool canGoBack: false
    default property alias buttons: row.data

    signal back()

    implicitHeight: Style.touch + Style.gap

    RowLayout {
        id: row

        anchors.fill: parent
        anchors.leftMargin: header.canGoBack ? Style.gap / 2 : Style.margin
        anchors.rightMargin: Style.gap / 2
        spacing: Style.gap / 2

        IconButton {
            visible: header.canGoBack
            text: qsTr("Back")
            iconName: "back"
            mirrorsIcon: header.LayoutMirroring.enabled
            onClicked: header.back()
        }

        Label {
            text: header.title
            font.pixelSize: header.canGoBack ? Style.titleText : Style.headlineText
            font.weight: Font.DemiBold
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: Style.smallText
            Layout.fillWidth: true
            Accessible.role: Accessible.Heading
        }

    }

}
