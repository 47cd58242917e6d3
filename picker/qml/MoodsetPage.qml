// SPDX-License-Identifier: BSD-3-Clause
import Moodset 1.0
import MoodsetPicker 1.0
import QtQuick 2.15

// One moodset: what it looks like, and all that can be changed of it.
DetailPage {
    id: page

    property var contentId
    readonly property var moodset: item.moodset
    readonly property bool isActive: !!moodset && moodset.url == Theme.activeMoodset
    readonly property bool isBusy: !!moodset && Notices.busy.indexOf(String(moodset.url)) >= 0

    function save(attributes) {
        Notices.begin(Actions.saveAttributes(contentId, attributes), "");
    }

    objectName: "moodsetPage"
    title: moodset ? moodset.name : qsTr("Moodset")
    hasPreview: !!moodset

    MoodsetItem {
        id: item

        contentId: page.contentId || 0
    }

    WallpaperColors {
        id: colors

        homeWallpaper: page.moodset ? page.moodset.homeWallpaper : ""
        applicationWallpaper: !page.moodset ? "" : String(page.moodset.applicationWallpaper) ? page.moodset.applicationWallpaper : page.moodset.homeWallpaper
    }

    Item {
        visible: !page.moodset
        width: parent.width
        height: Math.max(Style.touch * 6, page.viewHeight - 4 * Style.margin)

        Placeholder {
            objectName: waiting ? "" : "gone"
            waiting: item.status === MoodsetItem.Loading
            iconName: item.status === MoodsetItem.Error ? "warning" : "moodsets"
            title: waiting ? "" : qsTr("This moodset is not there any more")
            detail: item.status === MoodsetItem.Error ? item.error : ""
            action: waiting ? "" : qsTr("Back")
            onTriggered: page.back()
        }

    }

    MoodsetHead {
        visible: !!page.moodset
        width: parent.width
        moodset: page.moodset
        isActive: page.isActive
        isBusy: page.isBusy
        onApplied: Notices.begin(Actions.setMoodset(page.moodset.url), String(page.moodset.url))
        onSaved: page.save(attributes)
    }

    ColorSection {
        visible: !!page.moodset
        width: parent.width
        moodset: page.moodset
        colors: colors
        onSaved: page.save(attributes)
    }

    SoundSection {
        visible: !!page.moodset
        width: parent.width
        moodset: page.moodset
        onSaved: page.save(attributes)
    }

    ShellSection {
        visible: known && !!page.moodset
        width: parent.width
    }

    PushButton {
        objectName: "remove"
        visible: !!page.moodset
        width: parent.width
        text: qsTr("Remove")
        iconName: "delete"
        dangerous: true
        onClicked: {
            Notices.begin(Actions.remove(page.contentId), "");
            page.back();
        }
    }

    preview: PhonePreview {
        visible: !!page.moodset
        look: page.moodset
    }

}
