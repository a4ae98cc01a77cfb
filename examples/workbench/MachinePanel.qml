// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import NImageUtils 1.0
import Workbench

GridLayout { // the machine, and how long the photograph would take on one of its devices
    id: root

    required property OSUtils desktop
    required property size pixels // of the photograph; empty while unknown

    readonly property string graphics: Array.from(root.desktop.gpuList()).join(", ")
    readonly property int device: Math.max(0, processors.currentIndex - 2) // "Auto" takes the first
    readonly property bool isKnown: root.pixels.width > 0
    readonly property int seconds: root.isKnown ? root.desktop.estimateRescueETASeconds(root.pixels, root.device) : 0
    readonly property list<string> facts: [
        "Processor",
        root.desktop.cpuName() + ", " + root.desktop.getCpuMemory().toFixed(1) + " GiB",
        "Graphics",
        root.graphics === "" ? "none" : root.graphics,
        "Monitor",
        Library.monitorColorSpace()
    ]

    columns: 2
    columnSpacing: 16
    rowSpacing: 4

    Repeater {
        model: root.facts

        Label { // name and value by turns
            required property int index
            required property string modelData
            readonly property bool isName: index % 2 === 0

            Layout.fillWidth: !isName
            text: modelData
            textFormat: Text.PlainText
            elide: Text.ElideMiddle
            color: isName ? root.palette.placeholderText : root.palette.windowText
        }
    }

    Label {
        text: "Device"
        color: root.palette.placeholderText
    }

    RowLayout {
        ComboBox {
            id: processors

            Layout.preferredWidth: 320
            model: root.desktop.getAIProcessors()
        }

        Label {
            text: root.isKnown ? "about " + root.seconds + " s for this photograph" : ""
        }
    }
}
