// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Workbench

RowLayout { // settings that are kept under a name
    id: root

    required property SettingsModel settings

    spacing: Style.gap

    ComboBox {
        id: presets

        Layout.fillWidth: true
        implicitHeight: Style.controlHeight
        font.pixelSize: Style.textSize
        editable: true
        model: root.settings.presets
        currentIndex: -1
        Accessible.name: qsTr("Preset")
        contentItem: TextField {
            leftPadding: Style.gap
            text: presets.editText
            font: presets.font
            color: Style.text
            selectByMouse: true
            Accessible.name: qsTr("Name of the preset")
            background: Rectangle {
                radius: Style.radius
                color: Style.window
                border.width: presets.contentItem.activeFocus ? 2 : 1
                border.color: presets.contentItem.activeFocus ? Style.accent : Style.line
            }
        }
        onActivated: index => root.settings.usePreset(presets.textAt(index))
    }

    FlatButton {
        text: qsTr("Save")
        help: qsTr("Keeps the settings under this name")
        enabled: presets.editText.trim() !== ""
        onClicked: root.settings.savePreset(presets.editText)
    }

    FlatButton {
        text: qsTr("Delete")
        help: qsTr("Forgets the preset of this name")
        enabled: Array.from(root.settings.presets).includes(presets.editText)
        onClicked: root.settings.removePreset(presets.editText)
    }
}
