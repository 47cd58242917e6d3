// SPDX-License-Identifier: BSD-3-Clause
import Moodset 1.0
import MoodsetPicker 1.0
import QtQuick 2.15

// What is shown in place of the moodsets. It is loaded only while there are none.
Item {
    id: placeholders

    property MoodsetModel moodsets

    signal addRequested()

    Placeholder {
        visible: placeholders.moodsets.status === MoodsetModel.Loading
        waiting: true
        text: qsTr("Looking for your moodsets …")
    }

    Placeholder {
        visible: placeholders.moodsets.status === MoodsetModel.Ready
        iconName: "moodsets"
        title: qsTr("No moodsets yet")
        text: qsTr("Make one of any picture: its colours become those of your phone.")
        action: qsTr("Add a moodset")
        onTriggered: placeholders.addRequested()
    }

    Placeholder {
        objectName: "moodsetsError"
        visible: placeholders.moodsets.status === MoodsetModel.Error
        iconName: "warning"
        title: qsTr("Your moodsets cannot be read")
        text: qsTr("The library of the theme service is missing or damaged.")
        detail: placeholders.moodsets.error
        action: qsTr("Try again")
        onTriggered: {
            Notices.begin(Actions.refreshMoodsets(), "");
            placeholders.moodsets.refresh();
        }
    }

}
