// SPDX-License-Identifier: Apache-2.0
pragma Singleton

import QtQuick

QtObject { // every colour, distance and font size of the window; the surround of pictures is a neutral grey
    id: root

    property bool isDark: false

    readonly property color window: root.isDark ? "#1e1e1f" : "#f4f4f5"
    readonly property color surface: root.isDark ? "#262627" : "#eaeaec"
    readonly property color canvas: root.isDark ? "#141414" : "#d6d6d6"
    readonly property color control: root.isDark ? "#363738" : "#dedee1"
    readonly property color pressed: root.isDark ? "#48494b" : "#cacace"
    readonly property color line: root.isDark ? "#3b3c3e" : "#cfcfd3"
    readonly property color text: root.isDark ? "#ececec" : "#1d1f21"
    readonly property color mutedText: root.isDark ? "#b6b9bd" : "#53575c"
    readonly property color disabledText: root.isDark ? "#77797c" : "#8b8d91"
    readonly property color accent: root.isDark ? "#8ab4f0" : "#1a5fb4"
    readonly property color accentText: root.isDark ? "#10161d" : "#ffffff"
    readonly property color selection: root.isDark ? "#2b415e" : "#cfe0f5"
    readonly property color failure: root.isDark ? "#ffa29b" : "#a01c16"
    readonly property color success: root.isDark ? "#93d5a4" : "#1d6232"

    readonly property int gap: 8
    readonly property int margin: 16
    readonly property int radius: 4
    readonly property int controlHeight: 30
    readonly property int textSize: 13
    readonly property int smallTextSize: 12
    readonly property int titleSize: 16

    // Each pair of a text and what it stands on, for the test of their contrast.
    readonly property list<color> texts: [root.text, root.text, root.text, root.text, root.text, root.text, root.mutedText, root.mutedText, root.mutedText, root.mutedText, root.accentText, root.failure, root.failure, root.failure, root.success, root.success, root.accent]
    readonly property list<color> grounds: [root.window, root.surface, root.control, root.pressed, root.selection, root.canvas, root.window, root.surface, root.selection, root.canvas, root.accent, root.window, root.surface, root.selection, root.surface, root.selection, root.window]
}
