// SPDX-License-Identifier: BSD-3-Clause
import MoodsetPicker 1.0
import QtQuick 2.15

// The top of a page: a way back where there is one, a title, and buttons.
Item {
    id: header

    property string title
    property bool canGoBack: false
    default property alias buttons: row.data

    signal back()

    implicitHeight: Style.touch + Style.gap

    IconButton {
        id: backButton

        visible: header.canGoBack
        anchors.left: parent.left
        anchors.leftMargin: Style.gap / 2
        anchors.verticalCenter: parent.verticalCenter
        text: qsTr("Back")
        iconName: "back"
        mirrorsIcon: header.LayoutMirroring.enabled
        onClicked: header.back()
    }

    Label {
        anchors.left: header.canGoBack ? backButton.right : parent.left
        anchors.leftMargin: header.canGoBack ? Style.gap / 2 : Style.margin
        anchors.right: row.left
        anchors.rightMargin: row.width > 0 ? Style.gap / 2 : 0
        y: Math.ceil((parent.height - height) / 2)
        text: header.title
        font.pixelSize: header.canGoBack ? Style.titleText : Style.headlineText
        font.weight: Font.DemiBold
        fontSizeMode: Text.HorizontalFit
        minimumPixelSize: Style.smallText
        Accessible.role: Accessible.Heading
    }

    Row {
        id: row

        anchors.right: parent.right
        anchors.rightMargin: Style.gap / 2
        anchors.verticalCenter: parent.verticalCenter
        spacing: Style.gap / 2
    }

}
