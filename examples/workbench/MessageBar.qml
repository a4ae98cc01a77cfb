// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Workbench

Rectangle { // one sentence for the user, which goes away by itself, and whose text can be selected
    id: root

    property string text

    function show(text: string): void {
        root.text = text;
        vanish.restart();
    }

    visible: root.text !== ""
    implicitHeight: row.implicitHeight + Style.gap
    color: Style.selection
    Accessible.role: Accessible.AlertMessage
    Accessible.name: root.text

    Timer {
        id: vanish

        interval: 8000
        onTriggered: root.text = ""
    }

    RowLayout {
        id: row

        anchors.fill: parent
        anchors.leftMargin: Style.margin
        anchors.rightMargin: Style.gap

        TextEdit {
            Layout.fillWidth: true
            text: root.text
            textFormat: TextEdit.PlainText
            wrapMode: TextEdit.Wrap
            readOnly: true
            selectByMouse: true
            font.pixelSize: Style.textSize
            color: Style.text
            selectionColor: Style.accent
            selectedTextColor: Style.accentText
        }

        FlatButton {
            flat: true
            text: qsTr("Close")
            onClicked: root.text = ""
        }
    }
}
