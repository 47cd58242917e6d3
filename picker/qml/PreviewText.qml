// SPDX-License-Identifier: BSD-3-Clause
import QtQuick 2.15

// Text on a phone of a preview, which does not follow the size of the program's own text.
Text {
    font.pixelSize: 10
    elide: Text.ElideRight
    textFormat: Text.PlainText
    horizontalAlignment: Text.AlignLeft
    Accessible.ignored: true
}
