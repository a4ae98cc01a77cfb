// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import Workbench

Button { // a button of the window: plain, or in the accent colour for what is done most
    id: root

    property bool isMain: false
    property string help // shown under the pointer, and read by screen readers

    implicitHeight: Style.controlHeight
    leftPadding: 10
    rightPadding: 10
    font.pixelSize: Style.textSize
    Accessible.name: root.text
    Accessible.description: root.help
    ToolTip.visible: root.hovered && root.help !== ""
    ToolTip.delay: 700
    ToolTip.text: root.help
    contentItem: Text {
        text: root.text
        font: root.font
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
        color: !root.enabled ? Style.disabledText : root.isMain ? Style.accentText : Style.text
    }
    background: Rectangle {
        radius: Style.radius
        color: {
            if (root.enabled && (root.isMain || root.checked))
                return root.isMain ? Style.accent : Style.selection;
            return root.down || root.hovered && root.enabled ? Style.pressed : root.flat ? "transparent" : Style.control;
        }

        Rectangle { // where the keyboard is
            anchors.fill: parent
            anchors.margins: -3
            visible: root.visualFocus
            radius: Style.radius + 3
            color: "transparent"
            border.width: 2
            border.color: Style.accent
        }
    }
}
