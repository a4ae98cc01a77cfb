// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Workbench

Rectangle { // how far an export is
    id: root

    required property int finished
    required property int remaining
    required property int secondsLeft // 0 while unknown
    required property bool isPaused

    signal pauseWanted(isPaused: bool)
    signal cancelWanted

    function timeText(): string {
        if (root.isPaused)
            return qsTr("paused");
        if (root.secondsLeft <= 0)
            return "";
        return root.secondsLeft < 100 ? qsTr("about %1 s left").arg(root.secondsLeft) : qsTr("about %1 min left").arg(Math.ceil(root.secondsLeft / 60));
    }

    visible: root.remaining > 0
    implicitHeight: row.implicitHeight + Style.margin
    color: Style.surface

    Rectangle {
        width: parent.width
        height: 1
        color: Style.line
    }

    RowLayout {
        id: row

        anchors.fill: parent
        anchors.leftMargin: Style.margin
        anchors.rightMargin: Style.margin
        spacing: Style.margin

        Text {
            text: qsTr("%1 of %2 exported").arg(root.finished).arg(root.finished + root.remaining)
            font.pixelSize: Style.textSize
            color: Style.text
        }

        ProgressBar {
            id: bar

            Layout.fillWidth: true
            to: root.finished + root.remaining
            value: root.finished
            Accessible.name: qsTr("Progress of the export")
            background: Rectangle {
                implicitHeight: 6
                radius: 3
                color: Style.pressed
            }
            contentItem: Item {
                Rectangle {
                    width: parent.width * bar.visualPosition
                    height: parent.height
                    radius: 3
                    color: Style.accent
                }
            }
        }

        Text {
            text: root.timeText()
            font.pixelSize: Style.textSize
            color: Style.mutedText
        }

        FlatButton {
            text: root.isPaused ? qsTr("Continue") : qsTr("Pause")
            help: qsTr("Photographs in work are finished; no further one is begun")
            onClicked: root.pauseWanted(!root.isPaused)
        }

        FlatButton {
            text: qsTr("Cancel")
            help: qsTr("Stops at once and leaves no unfinished file")
            onClicked: root.cancelWanted()
        }
    }
}
