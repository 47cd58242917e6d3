// SPDX-License-Identifier: BSD-3-Clause
import MoodsetPicker 1.0
import QtQuick 2.15

// Text that never runs off its place: in one line with an ellipsis, or wrapped.
Text {
    color: Style.foreground
    font.pixelSize: Style.text
    elide: Text.ElideRight
    textFormat: Text.PlainText
    horizontalAlignment: Text.AlignLeft
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
