// SPDX-License-Identifier: BSD-3-Clause
import MoodsetPicker 1.0
import QtQuick 2.15

// The home screen and a page of an application, in a moodset's wallpapers and colours.
Row {
    id: preview

    property var look
    readonly property real screenWidth: Math.floor((width - spacing) / 2)

    function ink(color, otherwise) {
        return color === undefined || color === null ? otherwise : color;
    }

    spacing: Style.margin
    Accessible.role: Accessible.Graphic
    Accessible.name: qsTr("Preview of the home screen and of an application")

    PreviewScreen {
        objectName: "homePreview"
        width: preview.screenWidth
        wallpaper: preview.look && preview.look.homeWallpaper || ""

        PreviewHome {
            highlight: preview.ink(preview.look && preview.look.highlightColor, "#8fb6ff")
            primary: preview.ink(preview.look && preview.look.primaryColor, "white")
            secondary: preview.ink(preview.look && preview.look.secondaryColor, "#b0ffffff")
            secondaryHighlight: preview.ink(preview.look && preview.look.secondaryHighlightColor, highlight)
        }

    }

    PreviewScreen {
        readonly property bool isMade: !!preview.look && String(preview.look.applicationWallpaper || "").length > 0

        width: preview.screenWidth
        // A bundle has none before it was applied. A few pixels of its picture look as blurred.
        wallpaper: preview.look && (isMade ? preview.look.applicationWallpaper : preview.look.homeWallpaper) || ""
        detail: isMade ? Qt.size(512, 512) : Qt.size(16, 16)
        veil: 0.6

        PreviewApplication {
            highlight: preview.ink(preview.look && preview.look.highlightColor, "#8fb6ff")
            primary: preview.ink(preview.look && preview.look.primaryColor, "white")
            secondary: preview.ink(preview.look && preview.look.secondaryColor, "#b0ffffff")
            secondaryHighlight: preview.ink(preview.look && preview.look.secondaryHighlightColor, highlight)
        }

    }

}
