// SPDX-License-Identifier: BSD-3-Clause
import MoodsetPicker 1.0
import QtQuick 2.15
import QtQuick.Templates 2.15 as T

// The window. What it shows takes longer to read than the window itself, and comes after it.
T.ApplicationWindow {
    property alias loadsContent: loader.active
    readonly property alias content: loader.item

    width: 960
    height: 720
    minimumWidth: 320
    minimumHeight: 480
    title: qsTr("Moodset Picker")
    color: Style.background

    Loader {
        id: loader

        anchors.fill: parent
        active: false
        focus: true
        source: "Content.qml"
    }

}
