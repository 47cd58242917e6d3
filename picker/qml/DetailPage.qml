// SPDX-License-Identifier: BSD-3-Clause
import MoodsetPicker 1.0
import QtQuick 2.15

// A page above the tabs: a title, a preview of a moodset, and what can be done with it. The two are
// beside each other where there is room, and else one below the other.
FocusScope {
    id: page

    property alias title: header.title
    property alias buttons: header.buttons
    property alias preview: previewPlace.sourceComponent
    default property alias content: column.data
    // Without it, the content has all of the page.
    property bool hasPreview: true
    readonly property bool wide: hasPreview && width >= Style.text * 52
    // How much of the content is in view.
    readonly property real viewHeight: flickable.height
    readonly property int previewWidth: wide ? Math.min(Math.max(Style.text * 26, height - 2 * Style.touch), width * 0.42) : Math.min(width - 2 * Style.margin, Style.text * 26)

    signal back()

    PageHeader {
        id: header

        width: parent.width
        canGoBack: true
        onBack: page.back()
    }

    Flickable {
        id: flickable

        anchors.top: header.bottom
        anchors.bottom: parent.bottom
        width: parent.width
        contentHeight: Math.max(previewPlace.height, column.y + column.height) + Style.margin
        clip: true
        focus: true
        boundsBehavior: Flickable.StopAtBounds
        Keys.onUpPressed: contentY = Math.max(0, contentY - Style.touch)
        Keys.onDownPressed: contentY = Math.max(0, Math.min(contentHeight - height, contentY + Style.touch))

        Loader {
            id: previewPlace

            visible: page.hasPreview
            width: page.previewWidth
            height: page.hasPreview && item ? item.implicitHeight : 0
            x: page.wide ? (LayoutMirroring.enabled ? parent.width - width - Style.margin : Style.margin) : (parent.width - width) / 2
            // It stays in view while the settings beside it move.
            y: page.wide && height < flickable.height ? flickable.contentY : 0
        }

        Column {
            id: column

            y: page.wide ? 0 : previewPlace.height > 0 ? previewPlace.height + Style.margin : Style.gap
            x: page.wide && !LayoutMirroring.enabled ? page.previewWidth + 2 * Style.margin : Math.max(Style.margin, page.wide ? parent.width - page.previewWidth - 2 * Style.margin - width : (parent.width - width) / 2)
            width: page.wide ? Math.min(Style.column * 1.5, parent.width - page.previewWidth - 3 * Style.margin) : Math.min(Style.column, parent.width - 2 * Style.margin)
            spacing: Style.margin
        }

    }

}
