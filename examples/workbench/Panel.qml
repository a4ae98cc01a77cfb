// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import Workbench

Popup { // a panel over the window
    id: root

    anchors.centerIn: parent
    modal: true
    focus: true
    padding: Style.margin
    background: Rectangle {
        color: Style.window
        radius: Style.radius
        border.color: Style.line
    }
}
