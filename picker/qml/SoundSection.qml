// SPDX-License-Identifier: BSD-3-Clause
import MoodsetPicker 1.0
import QtQuick 2.15

// The volume of the ringer and the tones.
Section {
    id: section

    property var moodset
    readonly property var tones: [["ringerTone", qsTr("Ringtone")], ["messageTone", qsTr("Messages")], ["mailTone", qsTr("Mail")], ["internetCallTone", qsTr("Internet calls")], ["chatTone", qsTr("Chats")], ["calendarTone", qsTr("Calendar")], ["clockAlarmTone", qsTr("Alarm clock")]]

    signal saved(var attributes)

    function saveVolume(volume) {
        saved({
            "ringerVolume": volume
        });
    }

    function saveSwitch(tone, isOn) {
        const attributes = {
        };
        attributes[tone + "Enabled"] = isOn;
        saved(attributes);
    }

    function saveFile(tone, url) {
        const resources = {
        };
        resources[tone + "File"] = {
            "url": url
        };
        saved({
            "resources": resources
        });
    }

    title: qsTr("Volume and tones")

    Row {
        width: parent.width
        spacing: Style.gap

        Icon {
            name: "volume"
            anchors.verticalCenter: parent.verticalCenter
        }

        ValueSlider {
            id: volume

            objectName: "volume"
            name: qsTr("Volume of the ringer")
            width: parent.width - Style.icon - percent.width - 2 * Style.gap
            from: 0
            to: 100
            stepSize: 1
            value: section.moodset && section.moodset.ringerVolume >= 0 ? section.moodset.ringerVolume : 0
            onSettled: section.saveVolume(value)
        }

        Label {
            id: percent

            width: Style.text * 3.2
            text: qsTr("%1 %").arg(Math.round(volume.value))
            horizontalAlignment: Text.AlignRight
            anchors.verticalCenter: parent.verticalCenter
        }

    }

    Repeater {
        model: section.tones

        ToneRow {
            width: parent.width
            tone: modelData[0]
            name: modelData[1]
            file: section.moodset ? section.moodset.resources[modelData[0] + "File"] : undefined
            isOn: !!section.moodset && section.moodset[modelData[0] + "Enabled"] === true
            onSwitched: section.saveSwitch(tone, isOn)
            onChosen: section.saveFile(tone, url)
        }

    }

}
