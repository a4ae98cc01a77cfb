// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Workbench

RowLayout { // turns the photograph, and says how much of it the crop keeps
    id: root

    required property WorkbenchModel photographs
    required property int number
    required property real degrees
    required property rect crop // empty: as large as possible
    required property size kept // the pixels that the crop keeps

    signal done

    spacing: root.width < 560 ? 4 : Style.gap

    Text {
        visible: root.width > 640
        text: qsTr("Turn")
        font.pixelSize: Style.textSize
        color: Style.text
    }

    Slider {
        id: turn

        Layout.fillWidth: true
        Layout.minimumWidth: 60
        from: -45
        to: 45
        stepSize: 0.1
        value: root.degrees
        Accessible.name: qsTr("Turn in degrees")
        onMoved: root.photographs.setDegrees(root.number, turn.value)
    }

    NumberField {
        label: qsTr("Turn in degrees")
        implicitWidth: 56
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
        text: "⇋"
        help: qsTr("Mirror, left to right")
        Accessible.name: help
        onClicked: root.photographs.mirror(root.number)
    }

    Text {
        objectName: "kept"
        visible: root.width > 520
        text: qsTr("%1 × %2").arg(root.kept.width).arg(root.kept.height)
        font.pixelSize: Style.textSize
        color: Style.mutedText
        Accessible.name: qsTr("The crop keeps %1 × %2 pixels").arg(root.kept.width).arg(root.kept.height)
    }

    FlatButton {
        text: qsTr("Reset")
        enabled: root.degrees !== 0 || root.crop.width > 0
        onClicked: {
            root.photographs.setDegrees(root.number, 0);
            root.photographs.setCrop(root.number, Qt.rect(0, 0, 0, 0));
        }
    }

    FlatButton {
        isMain: true
        text: qsTr("Done")
        onClicked: root.done()
    }
}
