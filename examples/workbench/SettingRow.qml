// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Workbench

ColumnLayout { // a setting: its name, a button that resets it, what changes it, and a sentence of help
    id: root

    required property string name
    required property string help
    property bool canReset: true
    default property alias content: place.data

    signal reset

    spacing: 2

    RowLayout {
        spacing: Style.gap

        Text {
            Layout.fillWidth: true
            text: root.name
            font.pixelSize: Style.textSize
            font.bold: true
            color: Style.text
        }

        FlatButton {
            visible: root.canReset
            implicitHeight: 24
            flat: true
            text: qsTr("Reset")
            font.pixelSize: Style.smallTextSize
            Accessible.name: qsTr("Reset %1").arg(root.name)
            onClicked: root.reset()
        }
    }

    RowLayout {
        id: place

        Layout.fillWidth: true
        spacing: Style.gap
    }

    Text {
        Layout.fillWidth: true
        text: root.help
        wrapMode: Text.Wrap
        font.pixelSize: Style.smallTextSize
        color: Style.mutedText
    }
}
