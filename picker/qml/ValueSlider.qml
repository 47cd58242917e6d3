// SPDX-License-Identifier: BSD-3-Clause
import MoodsetPicker 1.0
import QtQuick 2.15
import QtQuick.Templates 2.15 as T

// A slider whose track can show what its values mean.
T.Slider {
    id: control

    property string name
    property Component track
    property bool isKeyHeld

    // The value has been chosen: the finger or the key is not pressed any more.
    signal settled()

    implicitWidth: 160
    implicitHeight: Style.touch
    focusPolicy: Qt.StrongFocus
    Accessible.name: name
    onActiveFocusChanged: isKeyHeld = false
    onPressedChanged: {
        if (!pressed && !isKeyHeld)
            settled();

    }
    // While a key repeats, the slider is released and pressed again and again.
    Keys.onPressed: isKeyHeld = true
    Keys.onReleased: isKeyHeld = event.isAutoRepeat

    background: Item {
        x: control.leftPadding
        y: (control.height - height) / 2
        width: control.availableWidth
        height: Math.round(Style.knob * (control.track ? 0.72 : 0.28))

        Rectangle {
            anchors.fill: parent
            visible: !control.track
            radius: height / 2
            color: Style.raised

            Rectangle {
                x: control.mirrored ? parent.width - width : 0
                width: control.position * parent.width
                height: parent.height
                radius: height / 2
                color: Style.accent
            }

        }

        Loader {
            anchors.fill: parent
            sourceComponent: control.track
        }

    }

    handle: Rectangle {
        x: control.leftPadding + control.visualPosition * (control.availableWidth - width)
        y: (control.height - height) / 2
        width: Style.knob
        height: width
        radius: height / 2
        color: Style.surface
        border.color: Style.accent
        border.width: Math.round(Style.knob * (control.pressed ? 0.36 : 0.22))

        FocusRing {
            control: control
            radius: height / 2
        }

    }

}
