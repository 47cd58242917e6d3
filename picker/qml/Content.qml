// SPDX-License-Identifier: BSD-3-Clause
import Moodset 1.0
import MoodsetPicker 1.0
import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import QtQuick.Window 2.15

// All that the window shows: tabs, the page of the tab with those above it, and what has come of the
// last call.
FocusScope {
    id: ui

    readonly property Item focused: Window.activeFocusItem
    readonly property bool wide: width >= Math.max(720, Style.text * 44)
    readonly property int sideWidth: wide ? navigation.implicitWidth : 0
    property int tab: 0

    function showTab(index) {
        pages.pop(null);
        tab = index;
        tabs.focusContent();
    }

    function focusPage(page) {
        if (page)
            page.forceActiveFocus();

    }

    // Scrolls the views that a control is in, as far as it takes to see the control.
    function reveal(item) {
        for (let view = item.parent; view; view = view.parent) {
            if (view.contentY === undefined)
                continue;

            const top = view.mapFromItem(item, 0, 0).y;
            const bottom = top + item.height;
            if (top < 0)
                view.contentY = Math.max(view.originY, view.contentY + top - Style.gap);
            else if (bottom > view.height)
                view.contentY = Math.min(view.originY + view.contentHeight - view.height, view.contentY + bottom - view.height + Style.gap);
        }
    }

    // A finger taps only what it sees, but the keyboard goes on to what is out of view.
    function followKeyboard(item) {
        if (item && (item.focusReason === Qt.TabFocusReason || item.focusReason === Qt.BacktabFocusReason))
            reveal(item);

    }

    // The file of a page is read when the page is first opened, so that the first frame need not wait.
    function openPage(name, properties) {
        const page = pages.push(Qt.resolvedUrl(name + ".qml"), properties);
        page.back.connect(() => {
            return pages.pop();
        });
        return page;
    }

    function openMoodset(contentId) {
        openPage("MoodsetPage", {
            "contentId": contentId
        });
    }

    function openText(text) {
        const found = Incoming.classify(text);
        if (found.kind === "none") {
            Notices.show(found.error, true);
            return ;
        }
        const page = openPage(found.kind === "bundle" ? "BundlePage" : "PicturePage", {
            "url": found.url
        });
        page.made.connect(() => {
            return showTab(0);
        });
    }

    function browse(installs) {
        const page = openPage("FolderPage", {
            "installs": installs
        });
        page.chosen.connect(openText);
    }

    function addMoodset() {
        const page = openPage("AddPage", {
        });
        page.entered.connect(openText);
        page.browseRequested.connect(browse);
    }

    focus: true
    onFocusedChanged: followKeyboard(focused)

    Item {
        id: content

        anchors.fill: parent
        LayoutMirroring.enabled: Style.mirrored
        LayoutMirroring.childrenInherit: true

        NavigationBar {
            id: navigation

            wide: ui.wide
            current: ui.tab
            visible: wide || pages.depth === 1
            width: wide ? implicitWidth : parent.width
            height: wide ? parent.height : implicitHeight
            x: wide && content.LayoutMirroring.enabled ? parent.width - width : 0
            y: wide ? 0 : parent.height - height
            onChosen: ui.showTab(index)
        }

        T.StackView {
            id: pages

            objectName: "pages"
            x: content.LayoutMirroring.enabled ? 0 : ui.sideWidth
            width: parent.width - ui.sideWidth
            height: parent.height - (ui.wide || !navigation.visible ? 0 : navigation.height) - (notice.visible ? notice.height + Style.margin : 0)
            initialItem: tabs
            focus: true
            onCurrentItemChanged: ui.focusPage(currentItem)
            Keys.onEscapePressed: pages.pop()
            Keys.onBackPressed: pages.pop()

            pushEnter: Transition {
                NumberAnimation {
                    property: "opacity"
                    from: 0
                    to: 1
                    duration: Style.motion
                }

            }

            popExit: Transition {
                NumberAnimation {
                    property: "opacity"
                    from: 1
                    to: 0
                    duration: Style.motion
                }

            }

        }

        TabPages {
            id: tabs

            current: ui.tab
            onMoodsetOpened: ui.openMoodset(contentId)
            onPictureOpened: ui.openText(url)
            onAddRequested: ui.addMoodset()
        }

        // Below the page rather than on it, where it would cover what can be tapped.
        Loader {
            id: notice

            visible: Notices.text.length > 0
            active: false
            onVisibleChanged: active = active || visible
            x: pages.x + (pages.width - width) / 2
            y: pages.height
            width: Math.min(pages.width - 2 * Style.margin, Style.text * 36)
            source: "NoticeBar.qml"
        }

        DropArea {
            anchors.fill: parent
            onDropped: {
                ui.openText(drop.hasUrls ? drop.urls[0] : drop.hasText ? drop.text : "");
                drop.accept();
            }

            Loader {
                anchors.fill: parent
                active: parent.containsDrag
                source: "DropHint.qml"
            }

        }

    }

    Connections {
        function onFinished(call, outcome) {
            Notices.finish(call, outcome);
        }

        target: Actions
    }

    Shortcut {
        sequences: [StandardKey.Paste]
        onActivated: ui.openText(Incoming.clipboardText())
    }

    Shortcut {
        sequences: [StandardKey.Quit]
        onActivated: Qt.quit()
    }

    Shortcut {
        sequences: [StandardKey.Back]
        onActivated: pages.pop()
    }

    Shortcut {
        sequence: "Ctrl+1"
        onActivated: ui.showTab(0)
    }

    Shortcut {
        sequence: "Ctrl+2"
        onActivated: ui.showTab(1)
    }

    Shortcut {
        sequences: [StandardKey.Find]
        onActivated: {
            ui.showTab(1);
            tabs.search();
        }
    }

}
