// SPDX-License-Identifier: BSD-3-Clause
import MoodsetPicker 1.0
import QtQuick 2.15

// A phone. What is on its screen is laid out for 180 by 360 and scaled to its size.
Rectangle {
    id: phone

    property alias wallpaper: picture.source
    property alias detail: picture.detail
    property real veil: 0
    default property alias content: screen.data
    readonly property int bezel: Math.max(4, width / 32)

    implicitHeight: Math.round(width * 1.9)
    radius: bezel * 3
    color: "#08080a"
    border.width: 1
    border.color: Style.outline

    Wallpaper {
        id: picture

        anchors.fill: parent
        anchors.margins: phone.bezel
        radius: phone.bezel * 2
        frame: phone.color
    }

    Rectangle {
        anchors.fill: picture
        radius: picture.radius
        color: "black"
        opacity: phone.veil
    }

    Item {
        id: screen

        x: picture.x
        y: picture.y
        width: 180
        height: picture.height / scale
        scale: picture.width / 180
        transformOrigin: Item.TopLeft
        LayoutMirroring.enabled: false
        LayoutMirroring.childrenInherit: true
    }

}
