// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Workbench

ItemDelegate { // one photograph in the list, and everything known about it
    id: root

    required property WorkbenchModel photographs
    required property int index
    required property int number
    required property string path
    required property string name
    required property int stage
    required property string failure
    required property string output
    required property string sizes
    required property list<string> factNames
    required property list<string> factValues
    required property size pixels
    required property real degrees
    required property rect crop

    readonly property bool isFailed: root.stage === WorkbenchModel.Failed
    readonly property bool isInQueue: root.stage === WorkbenchModel.Waiting || root.stage === WorkbenchModel.Exporting
    readonly property string stageText: {
        switch (root.stage) {
        case WorkbenchModel.Waiting:
            return qsTr("waiting");
        case WorkbenchModel.Exporting:
            return qsTr("being exported");
        case WorkbenchModel.Exported:
            return qsTr("exported");
        case WorkbenchModel.Kept:
            return qsTr("was up to date");
        case WorkbenchModel.Failed:
            return qsTr("failed");
        default:
            return "";
        }
    }

    signal chosen

    height: 64
    padding: Style.gap
    highlighted: ListView.isCurrentItem
    Accessible.name: root.stageText === "" ? root.name : root.name + ", " + root.stageText
    Accessible.description: root.failure
    ToolTip.visible: root.hovered && root.isFailed
    ToolTip.delay: 500
    ToolTip.text: root.failure
    onClicked: root.chosen()
    background: Rectangle {
        color: root.highlighted ? Style.selection : root.hovered ? Style.control : "transparent"

        Rectangle { // where the keyboard is
            anchors.fill: parent
            visible: root.highlighted && (root.ListView.view?.activeFocus ?? false)
            color: "transparent"
            border.width: 2
            border.color: Style.accent
        }
    }
    contentItem: RowLayout {
        spacing: Style.gap

        Thumbnail {
            Layout.preferredWidth: 64
            Layout.preferredHeight: 48
            photographs: root.photographs
            number: root.number
        }

        ColumnLayout {
            spacing: 2

            Text {
                Layout.fillWidth: true
                text: root.name
                textFormat: Text.PlainText
                elide: Text.ElideMiddle
                font.pixelSize: Style.textSize
                color: Style.text
            }

            Text {
                Layout.fillWidth: true
                text: root.stageText === "" || root.sizes === "" ? root.stageText + root.sizes : root.stageText + " · " + root.sizes
                textFormat: Text.PlainText
                elide: Text.ElideRight
                font.pixelSize: Style.smallTextSize
                color: root.isFailed ? Style.failure : Style.mutedText
            }
        }
    }
}
