// SPDX-License-Identifier: BSD-3-Clause
import MoodsetPicker 1.0
import QtQuick 2.15

// Chooses a colour: one that goes with the picture, or any by hue, saturation, lightness and opacity.
Column {
    id: editor

    property var value
    property var candidates
    readonly property color edited: Qt.hsla(hue.value, saturation.value, lightness.value, opacity_.value)

    signal chosen(color color)

    function take() {
        const color = value === undefined ? "#ffffff" : value;
        hue.value = Math.max(0, Qt.lighter(color, 1).hslHue);
        saturation.value = Qt.lighter(color, 1).hslSaturation;
        lightness.value = Qt.lighter(color, 1).hslLightness;
        opacity_.value = Qt.lighter(color, 1).a;
    }

    function hueGradient() {
        return [0, 1, 2, 3, 4, 5, 6].map((sixth) => {
            return Qt.hsla(sixth / 6 % 1, 0.8, 0.6, 1);
        });
    }

    spacing: Style.gap / 2
    topPadding: Style.gap / 2
    bottomPadding: Style.gap
    Component.onCompleted: take()
    onValueChanged: take()

    Label {
        width: parent.width
        visible: editor.candidates.length > 0
        text: qsTr("Colours that go with the picture")
        color: Style.subdued
        font.pixelSize: Style.smallText
        wrapMode: Text.Wrap
    }

    Flow {
        width: parent.width
        spacing: Style.gap

        Repeater {
            model: editor.candidates

            ColorDot {
                objectName: "candidate" + index
                color: modelData
                text: qsTr("Colour %1").arg(index + 1)
                onClicked: editor.chosen(color)
            }

        }

    }

    ColorSlider {
        id: hue

        width: parent.width
        name: qsTr("Hue")
        colors: editor.hueGradient()
        onReleased: editor.chosen(editor.edited)
    }

    ColorSlider {
        id: saturation

        width: parent.width
        name: qsTr("Saturation")
        colors: [Qt.hsla(hue.value, 0, lightness.value, 1), Qt.hsla(hue.value, 1, lightness.value, 1)]
        onReleased: editor.chosen(editor.edited)
    }

    ColorSlider {
        id: lightness

        width: parent.width
        name: qsTr("Lightness")
        colors: ["black", Qt.hsla(hue.value, saturation.value, 0.5, 1), "white"]
        onReleased: editor.chosen(editor.edited)
    }

    ColorSlider {
        id: opacity_

        width: parent.width
        name: qsTr("Opacity")
        colors: [Style.surface, Qt.hsla(hue.value, saturation.value, lightness.value, 1)]
        onReleased: editor.chosen(editor.edited)
    }

}
