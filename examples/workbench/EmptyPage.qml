// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Workbench

Item { // the window before there are photographs
    id: root

    required property WorkbenchModel photographs

    signal filesWanted
    signal folderWanted

    ColumnLayout {
        anchors.centerIn: parent
        width: Math.min(460, parent.width - 2 * Style.margin)
        spacing: Style.margin

        Text {
            Layout.fillWidth: true
            text: qsTr("Drop photographs or folders here")
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            font.pixelSize: 22
            color: Style.text
        }

        Text {
            Layout.fillWidth: true
            text: qsTr("See them before and after, choose size, format and colours, and export them. Nothing is written until you export.")
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            font.pixelSize: Style.textSize
            color: Style.mutedText
        }

        RowLayout {
            Layout.alignment: Qt.AlignHCenter
            spacing: Style.gap

            FlatButton {
                isMain: true
                text: qsTr("Open photographs …")
                onClicked: root.filesWanted()
            }

            FlatButton {
                text: qsTr("Open a folder …")
                onClicked: root.folderWanted()
            }
        }

        Text {
            visible: root.photographs.recentFolders.length > 0
            Layout.topMargin: Style.margin
            Layout.alignment: Qt.AlignHCenter
            text: qsTr("Recent folders")
            font.pixelSize: Style.smallTextSize
            color: Style.mutedText
        }

        // Not in the layout itself: hidden layouts of Qt 6.4 keep pointers to the items that a repeater destroys.
        Column {
            Layout.alignment: Qt.AlignHCenter
            spacing: Style.gap

            Repeater {
                model: root.photographs.recentFolders

                FlatButton {
                    id: folder

                    required property string modelData

                    anchors.horizontalCenter: parent?.horizontalCenter
                    width: Math.min(folder.implicitWidth, root.width - 2 * Style.margin)
                    flat: true
                    text: folder.modelData
                    onClicked: root.photographs.add([folder.modelData])
                }
            }
        }
    }
}
