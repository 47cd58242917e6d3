// SPDX-License-Identifier: BSD-3-Clause
import MoodsetPicker 1.0
import QtQuick 2.15

// The pages of the two tabs. That of the pictures is made when it is first looked at.
FocusScope {
    id: tabs

    property int current: 0

    signal moodsetOpened(var contentId)
    signal pictureOpened(string url)
    signal addRequested()

    function focusContent() {
        (current === 0 ? moodsets : pictures).forceActiveFocus();
    }

    function focusWithin(isActive) {
        if (isActive)
            focusContent();

    }

    function search() {
        pictures.item.search();
    }

    objectName: "tabs"
    onActiveFocusChanged: focusWithin(activeFocus)

    MoodsetsPage {
        id: moodsets

        anchors.fill: parent
        visible: tabs.current === 0
        focus: true
        onOpened: tabs.moodsetOpened(contentId)
        onAddRequested: tabs.addRequested()
    }

    Loader {
        id: pictures

        anchors.fill: parent
        visible: tabs.current === 1
        active: false
        onVisibleChanged: active = active || visible
        source: "PicturesPage.qml"
    }

    Connections {
        function onOpened(url) {
            tabs.pictureOpened(url);
        }

        target: pictures.item
    }

}
