// SPDX-License-Identifier: BSD-3-Clause
import MoodsetPicker 1.0
import QtQuick 2.15
import QtQuick.Templates 2.15 as T

// A colour that can be chosen.
T.Button {
    id: control

    property color color

    implicitWidth: Style.touch
    implicitHeight: Style.touch
    focusPolicy: Qt.StrongFocus
    Accessible.name: text

    background: Item {
        Rectangle {
            anchors.centerIn: parent
            width: parent.width - Style.gap
            height: width
            radius: width / 2
            color: control.color
            border.width: control.down ? 4 : 2
            border.color: Style.outline
        }

        FocusRing {
            control: control
            anchors.margins: 0
        }

    }

}
