// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Workbench

RowLayout { // turns the photograph
    id: root

    required property WorkbenchModel photographs
    required property int number
    required property real degrees

    signal done

    spacing: Style.gap

    Text {
        text: qsTr("Turn")
        font.pixelSize: Style.textSize
        color: Style.text
    }

    Slider {
        id: turn

        Layout.fillWidth: true
        from: -45
        to: 45
        stepSize: 0.1
        value: root.degrees
        Accessible.name: qsTr("Turn in degrees")
        onMoved: root.photographs.setDegrees(root.number, turn.value)
    }

    NumberField {
        label: qsTr("Turn in degrees")
        implicitWidth: 64
        number: root.degrees
        from: -45
        to: 45
        step: 0.1
        digits: 1
        onChosen: value => root.photographs.setDegrees(root.number, value)
    }

    Text {
        text: "°"
        font.pixelSize: Style.textSize
        color: Style.mutedText
    }

    FlatButton {
        text: "⟲"
        help: qsTr("Turn left by a quarter")
        Accessible.name: help
        onClicked: root.photographs.turn(root.number, -1)
    }

    FlatButton {
        text: "⟳"
        help: qsTr("Turn right by a quarter")
        Accessible.name: help
        onClicked: root.photographs.turn(root.number, 1)
    }

    FlatButton {
        text: qsTr("Mirror")
        onClicked: root.photographs.mirror(root.number)
    }

    FlatButton {
        text: qsTr("Reset")
        onClicked: root.photographs.setDegrees(root.number, 0)
    }

    FlatButton {
        isMain: true
        text: qsTr("Done")
        onClicked: root.done()
    }
}
