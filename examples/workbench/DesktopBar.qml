// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import NImageUtils 1.0
import Workbench

ToolBar { // what the window does together with the desktop
    id: root

    required property WorkbenchModel photographs
    required property OSUtils desktop
    required property string output // of the photograph that is shown; empty while there is none
    property string message
    readonly property alias brushSize: brush.value

    signal pasted(first: int)
    signal machineWanted

    function paste(): void {
        const first = root.photographs.count;
        root.photographs.add(root.desktop.clipboard());
        const added = root.photographs.count - first;
        root.message = added > 0 ? added + " pasted" : "The clipboard holds no picture";
        if (added > 0)
            root.pasted(first);
    }

    Connections {
        target: root.desktop

        function onFileMissing(path: string): void {
            root.message = "There is no " + path;
        }

        function onShowFileError(path: string): void {
            root.message = "Nothing here can show " + path;
        }
    }

    RowLayout {
        anchors.fill: parent

        ToolButton {
            action: Action {
                text: "Paste"
                shortcut: "Ctrl+V"
                onTriggered: root.paste()
            }
        }

        ToolButton {
            text: "Show file"
            enabled: root.output !== ""
            onClicked: root.desktop.showFileInGraphicalShell(root.output)
        }

        ToolButton {
            text: "Open folder"
            enabled: root.photographs.finished > root.photographs.failed // else it may be missing
            onClicked: root.desktop.openFolder(root.photographs.outputFolder)
        }

        ToolButton {
            text: "Machine"
            onClicked: root.machineWanted()
        }

        Label {
            Layout.leftMargin: 12
            text: "Brush"
            color: root.palette.placeholderText
        }

        Slider {
            id: brush

            from: 1
            to: 100
            value: 50
            palette.window: root.palette.dark // the handle
        }

        Label {
            Layout.fillWidth: true
            Layout.margins: 12
            text: root.message
            textFormat: Text.PlainText
            elide: Text.ElideMiddle
            horizontalAlignment: Text.AlignRight
            color: root.palette.placeholderText
        }
    }

    Shortcut {
        sequences: ["Ctrl+Q"]
        context: Qt.ApplicationShortcut // over an open panel, too
        onActivated: Qt.quit()
    }
}
