// SPDX-License-Identifier: BSD-3-Clause
import MoodsetPicker 1.0
import QtQuick 2.15

// Colours that run into each other, from the start to the end of a line of text.
Rectangle {
    id: track

    property var colors: []

    function stop(index) {
        return colors.length > 0 ? colors[Math.min(index, colors.length - 1)] : "transparent";
    }

    radius: height / 2
    rotation: LayoutMirroring.enabled ? 180 : 0
    border.width: 1
    border.color: Style.outline

    gradient: Gradient {
        orientation: Gradient.Horizontal

        GradientStop {
            position: 0
            color: track.stop(0)
        }

        GradientStop {
            position: track.colors.length > 1 ? 1 / (track.colors.length - 1) : 0.5
            color: track.stop(1)
        }

        GradientStop {
            position: track.colors.length > 2 ? 2 / (track.colors.length - 1) : 1
            color: track.stop(2)
        }

        GradientStop {
            position: track.colors.length > 3 ? 3 / (track.colors.length - 1) : 1
            color: track.stop(3)
        }

        GradientStop {
            position: track.colors.length > 4 ? 4 / (track.colors.length - 1) : 1
            color: track.stop(4)
        }

        GradientStop {
            position: track.colors.length > 5 ? 5 / (track.colors.length - 1) : 1
            color: track.stop(5)
        }

        GradientStop {
            position: 1
            color: track.stop(6)
        }

    }

}
