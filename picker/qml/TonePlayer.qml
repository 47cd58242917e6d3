// SPDX-License-Identifier: BSD-3-Clause
import MoodsetPicker 1.0
import QtMultimedia 5.15
import QtQuick 2.15

// Plays one file at a time.
Item {
    readonly property bool isPlaying: audio.playbackState === Audio.PlayingState

    function toggle(file) {
        if (isPlaying) {
            audio.stop();
        } else {
            audio.source = file;
            audio.play();
        }
    }

    Audio {
        id: audio

        audioRole: Audio.RingtoneRole
        onError: Notices.show(qsTr("The tone cannot be played: %1").arg(errorString), true)
    }

}
