// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Workbench

Panel { // the keys of the window
    id: root

    readonly property list<string> keys: ["Ctrl+O", "Ctrl+Shift+O", "Ctrl+V", qsTr("Delete"), "Ctrl+F", "Ctrl+E", "Ctrl+Shift+E", "Ctrl+P", qsTr("Escape"), "Ctrl+J", "1 … 5", "F, Z", "+, −", qsTr("Arrow keys"), "[, ]", "C", "Ctrl+,", "F11", "F1", "Ctrl+Q"]
    readonly property list<string> uses: [qsTr("Open photographs"), qsTr("Open a folder"), qsTr("Paste photographs from the clipboard"), qsTr("Remove the photograph from the list"), qsTr("Filter the list"), qsTr("Export the photograph"), qsTr("Export all photographs"), qsTr("Pause or continue the export"), qsTr("Cancel the export"), qsTr("Show the exported file in the file manager"), qsTr("Divider, side by side, blinking, before, after"), qsTr("Fit in, 100 %"), qsTr("Zoom in, zoom out"), qsTr("Choose in the list; move the picture when it has the focus"), qsTr("Turn left, turn right"), qsTr("Crop and straighten; arrow keys move the frame, with Shift they resize it"), qsTr("Show or hide the settings"), qsTr("Full screen"), qsTr("This list"), qsTr("Quit")]

    GridLayout {
        columns: 2
        columnSpacing: 2 * Style.margin
        rowSpacing: 4

        Text {
            Layout.columnSpan: 2
            Layout.bottomMargin: Style.gap
            text: qsTr("Keys")
            font.pixelSize: Style.titleSize
            font.bold: true
            color: Style.text
        }

        Repeater {
            model: root.keys.length * 2

            Text { // key and use by turns
                required property int index
                readonly property bool isKey: index % 2 === 0

                text: (isKey ? root.keys : root.uses)[Math.floor(index / 2)]
                font.pixelSize: Style.textSize
                color: isKey ? Style.text : Style.mutedText
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }

        FlatButton {
            Layout.columnSpan: 2
            Layout.topMargin: Style.gap
            Layout.alignment: Qt.AlignRight
            focus: true
            text: qsTr("Close")
            onClicked: root.close()
        }
    }
}
