// SPDX-License-Identifier: BSD-3-Clause
import MoodsetPicker 1.0
import QtQuick 2.15

// Shows that something is under way: three dots, which stand still where motion is reduced.
Row {
    id: spinner

    property color color: Style.accent
    property int dot: Math.round(Style.text * 0.6)

    spacing: dot
    Accessible.role: Accessible.Indicator
    Accessible.name: qsTr("Please wait")

    Repeater {
        model: 3

        Rectangle {
            id: circle

            width: spinner.dot
            height: width
            radius: width / 2
            color: spinner.color

            SequentialAnimation on opacity {
                running: spinner.visible && Style.motion > 0
                loops: Animation.Infinite

                PauseAnimation {
                    duration: index * 150
                }

                NumberAnimation {
                    from: 1
                    to: 0.25
                    duration: 350
                }

                NumberAnimation {
                    from: 0.25
                    to: 1
                    duration: 350
                }

                PauseAnimation {
                    duration: 300 - index * 150
                }

            }

        }

    }

}
