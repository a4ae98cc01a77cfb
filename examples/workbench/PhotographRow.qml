// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Workbench

ItemDelegate { // one photograph in the list, and everything known about it
    id: root

    required property int index
    required property string path
    required property int stage
    required property string detail
    required property string stored
    required property string upright
    required property size pixels
    required property string grey
    required property string noise
    required property string output
    required property string outputSize
    required property string camera
    required property string times
    required property string name

    readonly property string stageText: {
        switch (root.stage) {
        case WorkbenchModel.Working:
            return root.detail;
        case WorkbenchModel.Exported:
            return "exported";
        case WorkbenchModel.Kept:
            return "kept";
        case WorkbenchModel.Failed:
            return "failed";
        default:
            return "waiting";
        }
    }

    signal chosen

    highlighted: ListView.isCurrentItem
    onClicked: root.chosen()
    background: Rectangle {
        color: root.highlighted ? root.palette.highlight : root.hovered ? root.palette.mid : "transparent"
    }
    contentItem: RowLayout {
        Label {
            Layout.fillWidth: true
            text: root.name
            textFormat: Text.PlainText
            elide: Text.ElideMiddle
        }

        Label {
            text: root.stageText
            opacity: 0.8
            color: root.stage === WorkbenchModel.Failed ? (root.palette.window.hslLightness < 0.5 ? "#ff8a80" : "#b3261e") : root.palette.windowText
        }
    }
}
