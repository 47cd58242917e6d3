// SPDX-License-Identifier: BSD-3-Clause
import MoodsetPicker 1.0
import QtQuick 2.15

// A picture that fills its place, and a plain field until it has come or where there is none.
Rectangle {
    id: wallpaper

    property alias source: image.source
    property alias status: image.status
    property alias detail: image.sourceSize
    property color frame: "transparent"

    radius: Style.radius - Style.gap / 2
    color: Style.raised

    Image {
        id: image

        anchors.fill: parent
        asynchronous: true
        sourceSize.width: Math.ceil(width / 64) * 64
        sourceSize.height: Math.ceil(height / 64) * 64
        fillMode: Image.PreserveAspectCrop
        opacity: status === Image.Ready ? 1 : 0

        Behavior on opacity {
            enabled: Style.motion > 0

            NumberAnimation {
                duration: Style.motion
            }

        }

    }

    // Rounds the corners of the picture, which a clip would not, with the colour that is around it.
    Rectangle {
        anchors.fill: parent
        anchors.margins: -border.width
        visible: wallpaper.frame.a > 0 && image.status === Image.Ready
        radius: wallpaper.radius + border.width
        color: "transparent"
        border.width: Math.ceil(wallpaper.radius * 0.42)
        border.color: wallpaper.frame
    }

    Loader {
        anchors.centerIn: parent
        active: image.status === Image.Error

        sourceComponent: Icon {
            name: "pictures"
            color: Style.subdued
        }

    }

}
