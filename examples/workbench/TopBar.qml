// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Workbench

Rectangle { // what is done most
    id: root

    required property PictureView view
    required property bool hasPhotograph
    required property bool hasPhotographs
    property bool showsSettings: true
    readonly property bool isNarrow: root.width < 1000

    signal filesWanted
    signal folderWanted(isRecursive: bool)
    signal pasteWanted
    signal exportWanted
    signal exportAllWanted
    signal machineWanted
    signal keysWanted
    signal fullScreenWanted
    signal clearWanted

    implicitHeight: Style.controlHeight + 2 * Style.gap
    color: Style.surface
    Accessible.role: Accessible.ToolBar
    Accessible.name: qsTr("Tools")

    Rectangle {
        anchors.bottom: parent.bottom
        width: parent.width
        height: 1
        color: Style.line
    }

    RowLayout {
        anchors.fill: parent
        anchors.leftMargin: Style.gap
        anchors.rightMargin: Style.gap
        spacing: root.isNarrow ? 4 : Style.gap

        FlatButton {
            objectName: "open"
            text: qsTr("Open")
            help: qsTr("Open photographs or a folder, or paste")
            onClicked: openMenu.popup(this, 0, height)

            Menu {
                id: openMenu

                MenuItem {
                    text: qsTr("Photographs …")
                    onTriggered: root.filesWanted()
                }

                MenuItem {
                    text: qsTr("Folder …")
                    onTriggered: root.folderWanted(false)
                }

                MenuItem {
                    text: qsTr("Folder with its subfolders …")
                    onTriggered: root.folderWanted(true)
                }

                MenuItem {
                    text: qsTr("Paste")
                    onTriggered: root.pasteWanted()
                }

                MenuItem {
                    text: qsTr("Remove all from the list")
                    enabled: root.hasPhotographs
                    onTriggered: root.clearWanted()
                }
            }
        }

        ComboBox {
            implicitHeight: Style.controlHeight
            Layout.preferredWidth: root.isNarrow ? 110 : 140
            font.pixelSize: Style.textSize
            enabled: root.hasPhotograph
            model: [qsTr("Divider"), qsTr("Side by side"), qsTr("Blinking"), qsTr("Before"), qsTr("After")]
            currentIndex: root.view.mode
            Accessible.name: qsTr("How before and after are compared")
            onActivated: index => root.view.mode = index
        }

        FlatButton {
            text: qsTr("Fit")
            help: qsTr("Show the whole picture")
            enabled: root.hasPhotograph
            checked: root.hasPhotograph && root.view.zoom === 0
            onClicked: root.view.fit()
        }

        FlatButton {
            objectName: "fullSize"
            text: qsTr("100 %")
            help: qsTr("One pixel of the exported picture for each of the screen")
            enabled: root.hasPhotograph
            checked: root.hasPhotograph && root.view.zoom === 1
            onClicked: root.view.zoomBy(1 / root.view.shownZoom)
        }

        Text {
            Layout.preferredWidth: 48
            visible: !root.isNarrow
            text: root.hasPhotograph ? Math.round(root.view.shownZoom * 100) + " %" : ""
            horizontalAlignment: Text.AlignHCenter
            font.pixelSize: Style.textSize
            color: Style.mutedText
        }

        FlatButton {
            objectName: "crop"
            text: qsTr("Crop")
            help: qsTr("Crop and straighten the picture by hand")
            enabled: root.hasPhotograph
            checkable: true
            checked: root.view.isCropping
            onToggled: root.view.isCropping = checked
        }

        Item {
            Layout.fillWidth: true
        }

        FlatButton {
            objectName: "exportAll"
            text: qsTr("Export all")
            help: qsTr("Export every photograph in the list")
            enabled: root.hasPhotographs
            onClicked: root.exportAllWanted()
        }

        FlatButton {
            objectName: "export"
            isMain: true
            text: qsTr("Export")
            help: qsTr("Export this photograph")
            enabled: root.hasPhotograph
            onClicked: root.exportWanted()
        }

        FlatButton {
            text: qsTr("Settings")
            help: qsTr("Show or hide the settings of exports")
            checkable: true
            enabled: root.hasPhotographs
            checked: root.showsSettings
            onToggled: root.showsSettings = checked
        }

        FlatButton {
            text: "…"
            help: qsTr("More")
            Accessible.name: qsTr("More")
            onClicked: moreMenu.popup(this, 0, height)

            Menu {
                id: moreMenu

                MenuItem {
                    text: qsTr("Full screen")
                    onTriggered: root.fullScreenWanted()
                }

                MenuItem {
                    text: qsTr("This machine")
                    onTriggered: root.machineWanted()
                }

                MenuItem {
                    text: qsTr("Keys")
                    onTriggered: root.keysWanted()
                }

                MenuItem {
                    text: qsTr("Quit")
                    onTriggered: Qt.quit()
                }
            }
        }
    }
}
