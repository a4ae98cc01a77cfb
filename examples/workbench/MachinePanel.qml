// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import NImageUtils 1.0
import Workbench

Popup { // the machine, which is asked while it is shown, and how long the photograph would take on a device
    id: root

    required property OSUtils desktop
    required property size pixels // of the photograph; empty while unknown

    readonly property int device: Math.max(0, processors.currentIndex - 2) // "Auto" takes the first
    readonly property bool isKnown: root.pixels.width > 0
    readonly property int seconds: root.isKnown ? root.desktop.estimateRescueETASeconds(root.pixels, root.device) : 0
    readonly property list<string> names: ["Processor", "Memory", "Graphics", "Monitor"]
    readonly property list<string> values: root.visible ? [
        root.desktop.cpuName(),
        root.desktop.getCpuMemory().toFixed(1) + " GiB",
        Array.from(root.desktop.gpuList()).join(", ") || "none",
        Library.monitorColorSpace()
    ] : []

    function duration(seconds: int): string {
        if (seconds < 600)
            return seconds + " s";
        return seconds < 36000 ? Math.round(seconds / 60) + " min" : Math.round(seconds / 3600) + " h";
    }

    padding: 16
    background: Rectangle {
        color: root.palette.base
        border.color: root.palette.mid
    }

    GridLayout {
        anchors.fill: parent
        columns: 2
        columnSpacing: 16
        rowSpacing: 4

        Repeater {
            model: root.names.length * 2

            Label { // name and value by turns
                required property int index
                readonly property int row: Math.floor(index / 2)
                readonly property bool isName: index % 2 === 0

                Layout.fillWidth: !isName
                text: isName ? root.names[row] : root.values[row] ?? ""
                textFormat: Text.PlainText
                elide: Text.ElideMiddle
                color: isName ? root.palette.placeholderText : root.palette.windowText
            }
        }

        Label {
            text: "Device"
            color: root.palette.placeholderText
        }

        ComboBox {
            id: processors

            Layout.fillWidth: true
            model: root.visible ? root.desktop.getAIProcessors() : []
        }

        Label {
            text: "Estimate"
            color: root.palette.placeholderText
        }

        Label {
            text: root.isKnown ? "about " + root.duration(root.seconds) + " for this photograph" : "–"
        }
    }
}
