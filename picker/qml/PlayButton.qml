// SPDX-License-Identifier: BSD-3-Clause
import MoodsetPicker 1.0
import QtQuick 2.15

// Plays a tone, and stops it. What plays is loaded when it is first needed.
IconButton {
    id: button

    property url file
    property string name
    readonly property bool isPlaying: player.item !== null && player.item.isPlaying

    objectName: "play"
    text: isPlaying ? qsTr("Stop: %1").arg(name) : qsTr("Play: %1").arg(name)
    iconName: isPlaying ? "stop" : "play"
    onClicked: {
        player.source = "TonePlayer.qml";
        if (player.status === Loader.Error)
            Notices.show(qsTr("Tones cannot be played: Qt's multimedia module is missing."), true);
        else
            player.item.toggle(file);
    }

    Loader {
        id: player
    }

}
