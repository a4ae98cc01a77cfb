// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import Workbench

TextField { // a number that is typed, or changed with the arrow keys
    id: root

    required property string label // for screen readers
    required property real number
    property real from: 0
    property real to: 100
    property real step: 1
    property int digits: 0

    signal chosen(value: real)

    function choose(value: real): void {
        const bounded = Math.max(root.from, Math.min(root.to, value));
        if (bounded !== root.number)
            root.chosen(bounded);
        root.text = root.shown();
    }

    function shown(): string {
        return Number(root.number).toLocaleString(Qt.locale(), "f", root.digits).replace(Qt.locale().groupSeparator, "");
    }

    function typed(): real {
        const value = parseFloat(root.text.replace(Qt.locale().decimalPoint, "."));
        return isNaN(value) ? root.number : value;
    }

    implicitWidth: 80
    implicitHeight: Style.controlHeight
    font.pixelSize: Style.textSize
    horizontalAlignment: Text.AlignRight
    verticalAlignment: Text.AlignVCenter
    selectByMouse: true
    inputMethodHints: Qt.ImhFormattedNumbersOnly
    text: root.shown()
    color: root.enabled ? Style.text : Style.disabledText
    Accessible.name: root.label
    onNumberChanged: root.text = root.shown()
    onEditingFinished: root.choose(root.typed())
    Keys.onUpPressed: root.choose(root.typed() + root.step)
    Keys.onDownPressed: root.choose(root.typed() - root.step)
    background: Rectangle {
        radius: Style.radius
        color: Style.window
        border.width: root.activeFocus ? 2 : 1
        border.color: root.activeFocus ? Style.accent : Style.line
    }
}
