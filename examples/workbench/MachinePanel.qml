// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import NImageUtils 1.0
import Workbench

Panel { // the machine, which is asked while it is shown
    id: root

    required property OSUtils desktop
    required property size pixels // of the photograph; empty while unknown

    readonly property int device: Math.max(0, processors.currentIndex - 2) // "Auto" takes the first
    readonly property bool isKnown: root.pixels.width > 0
    readonly property int seconds: root.visible && root.isKnown ? root.desktop.estimateRescueETASeconds(root.pixels, root.device) : 0
    readonly property string monitor: root.visible ? Library.monitorColorSpace() : ""

    function duration(seconds: int): string {
        if (seconds < 600)
            return qsTr("%1 s").arg(seconds);
        return seconds < 36000 ? qsTr("%1 min").arg(Math.round(seconds / 60)) : qsTr("%1 h").arg(Math.round(seconds / 3600));
    }

    ColumnLayout {
        spacing: Style.margin

        Text {
            text: qsTr("This machine")
            font.pixelSize: Style.titleSize
            font.bold: true
            color: Style.text
        }

        FactList {
            Layout.fillWidth: true
            Layout.minimumWidth: 420
            names: [qsTr("Processor"), qsTr("Memory"), qsTr("Graphics"), qsTr("Monitor")]
            values: root.visible ? [root.desktop.cpuName() || "–", qsTr("%1 GiB").arg(root.desktop.getCpuMemory().toFixed(1)), Array.from(root.desktop.gpuList()).join(", ") || qsTr("none that can compute"), root.monitor || qsTr("has no colour profile; pictures are shown as sRGB")] : []
        }

        RowLayout {
            spacing: Style.gap

            Text {
                text: qsTr("Device")
                font.pixelSize: Style.textSize
                color: Style.mutedText
            }

            ComboBox {
                id: processors

                Layout.fillWidth: true
                model: root.visible ? root.desktop.getAIProcessors() : []
                Accessible.name: qsTr("Device of the estimate")
            }
        }

        Text {
            objectName: "estimate"
            Layout.preferredWidth: 420
            visible: root.isKnown
            text: qsTr("A restoration by a neural network would take about %1 for this photograph on this device. This program does not restore; its exports take seconds.").arg(root.duration(root.seconds))
            wrapMode: Text.Wrap
            font.pixelSize: Style.smallTextSize
            color: Style.mutedText
        }

        FlatButton {
            Layout.alignment: Qt.AlignRight
            focus: true
            text: qsTr("Close")
            onClicked: root.close()
        }
    }
}
