// SPDX-License-Identifier: BSD-3-Clause
import MoodsetPicker 1.0
import QtQuick 2.15

// A slider with its name, on a track of the colours that it gives.
Column {
    id: slider

    property string name
    property var colors: []
    property alias value: control.value

    signal released()

    Label {
        width: parent.width
        text: slider.name
        color: Style.subdued
        font.pixelSize: Style.smallText
        Accessible.ignored: true
    }

    ValueSlider {
        id: control

        objectName: slider.name
        width: parent.width
        name: slider.name
        stepSize: 0.01
        onSettled: slider.released()

        track: GradientTrack {
            colors: slider.colors
        }

    }

}
