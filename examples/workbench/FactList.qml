// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Workbench

GridLayout { // what is known about a photograph
    id: root

    required property PhotographRow photograph

    readonly property list<string> names: ["File", "Size", "Camera", "Pixels", "Output", "Times"]
    readonly property list<string> values: root.photograph ? [
        root.photograph.path,
        root.photograph.upright + " (stored " + root.photograph.stored + ")",
        root.photograph.camera,
        "all grey: " + root.photograph.grey + ", finest detail in the lightness: " + root.photograph.noise,
        root.photograph.stage === WorkbenchModel.Failed ? root.photograph.detail : root.photograph.output,
        root.photograph.times
    ] : []

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
}
