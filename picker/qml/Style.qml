// SPDX-License-Identifier: BSD-3-Clause
import MoodsetPicker.Desktop 1.0
import QtQuick 2.15
pragma Singleton

// The program's measures and colours. All measures follow the size of the text.
QtObject {
    readonly property bool dark: Appearance.dark
    readonly property bool mirrored: Appearance.mirrored
    readonly property int motion: Appearance.reducedMotion ? 0 : 160
    readonly property bool keyboard: Appearance.usesKeyboard
    readonly property int text: Appearance.textSize
    readonly property int smallText: Math.round(text * 0.87)
    readonly property int titleText: Math.round(text * 1.2)
    readonly property int headlineText: Math.round(text * 1.6)
    readonly property int gap: 8
    readonly property int margin: 16
    readonly property int radius: 12
    readonly property int touch: Math.max(48, Math.round(text * 2.4))
    readonly property int icon: Math.round(text * 1.5)
    readonly property int knob: Math.max(28, Math.round(text * 1.3))
    readonly property int tile: Math.max(150, Math.round(text * 10))
    readonly property int column: Math.max(480, text * 36)
    readonly property color background: dark ? "#14161a" : "#f4f5f8"
    readonly property color surface: dark ? "#1e2127" : "#ffffff"
    readonly property color raised: dark ? "#2b2f38" : "#e6e9ef"
    readonly property color pressed: dark ? "#3a404c" : "#d5dae3"
    readonly property color outline: dark ? "#4a505d" : "#c3c9d4"
    readonly property color foreground: dark ? "#f3f4f6" : "#16181d"
    readonly property color subdued: dark ? "#b0b6c2" : "#535a67"
    readonly property color accent: dark ? "#8fb6ff" : "#2254c4"
    readonly property color accentInk: dark ? "#0d1a33" : "#ffffff"
    readonly property color danger: dark ? "#ffa094" : "#b3261e"
    readonly property color star: dark ? "#ffcc4d" : "#9a6a00"
}
