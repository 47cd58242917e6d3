// SPDX-License-Identifier: BSD-3-Clause
import MoodsetPicker 1.0
import QtQuick 2.15

// The colours of a moodset, as dots on its wallpaper.
Row {
    id: swatches

    property var moodset
    property int dot: Math.round(Style.text * 1.1)

    spacing: -Math.round(dot / 4)
    Accessible.ignored: true

    Repeater {
        model: [swatches.moodset.highlightColor, swatches.moodset.secondaryHighlightColor, swatches.moodset.primaryColor]

        Rectangle {
            visible: modelData !== undefined
            width: swatches.dot
            height: width
            radius: width / 2
            color: modelData || "transparent"
            border.width: 2
            border.color: "#60000000"
        }

    }

}
