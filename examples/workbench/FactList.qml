// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound

import QtQuick
import Workbench

Column { // what is known about a photograph; its texts can be selected
    id: root

    required property list<string> names
    required property list<string> values
    readonly property int nameWidth: 100

    spacing: 3

    Repeater {
        model: root.names

        Row {
            id: fact

            required property int index
            required property string modelData

            spacing: Style.gap

            Text {
                width: root.nameWidth
                text: fact.modelData
                elide: Text.ElideRight
                font.pixelSize: Style.smallTextSize
                color: Style.mutedText
            }

            TextEdit {
                id: value

                width: root.width - root.nameWidth - fact.spacing
                text: root.values[fact.index] ?? ""
                textFormat: TextEdit.PlainText
                wrapMode: TextEdit.Wrap
                readOnly: true
                selectByMouse: true
                activeFocusOnTab: true
                onActiveFocusChanged: value.activeFocus ? value.selectAll() : value.deselect() // to be copied
                font.pixelSize: Style.smallTextSize
                color: Style.text
                selectionColor: Style.accent
                selectedTextColor: Style.accentText
                Accessible.role: Accessible.StaticText
                Accessible.name: fact.modelData + ": " + value.text
            }
        }
    }
}
