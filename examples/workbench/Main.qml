// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import NImageUtils 1.0
import Workbench

ApplicationWindow {
    id: root

    required property WorkbenchModel photographs
    readonly property PhotographRow selected: list.currentItem as PhotographRow
    readonly property size pixels: root.selected?.pixels ?? Qt.size(-1, -1)
    readonly property real brushShare: Library.brushShare(bar.brushSize, root.pixels)
    property bool isDark: osUtils.darkMode()

    function summary(): string {
        const done = root.photographs.finished + " of " + root.photographs.count + " done";
        return root.photographs.failed > 0 ? done + ", " + root.photographs.failed + " failed" : done;
    }

    title: "Workbench – " + root.summary()
    width: 1280
    height: 760
    minimumWidth: 720
    minimumHeight: 480
    visible: true
    color: palette.window
    palette {
        window: root.isDark ? "#1f2123" : "#f7f7f8"
        windowText: root.isDark ? "#e6e6e6" : "#1f2123"
        base: root.isDark ? "#282a2d" : "#ececee"
        text: root.isDark ? "#e6e6e6" : "#1f2123"
        button: root.isDark ? "#33363a" : "#e0e1e4"
        buttonText: root.isDark ? "#e6e6e6" : "#1f2123"
        light: root.isDark ? "#3a3d41" : "#dcdde0"
        highlight: root.isDark ? "#3d6ea8" : "#b9d3f2"
        highlightedText: root.isDark ? "#ffffff" : "#1f2123"
        mid: root.isDark ? "#3a3d41" : "#dcdde0"
        midlight: root.isDark ? "#3a3d41" : "#dcdde0"
        dark: "#5b8fd0"
        shadow: root.isDark ? "#151617" : "#d4d6d9"
        placeholderText: root.isDark ? "#9a9fa5" : "#62666c"
    }
    onActiveChanged: {
        if (root.active)
            root.isDark = osUtils.darkMode(); // it may have changed meanwhile
    }
    header: DesktopBar {
        id: bar

        photographs: root.photographs
        desktop: osUtils
        output: root.selected?.output ?? ""
        onMachineWanted: machine.open()
        onPasted: first => {
            list.follows = true;
            list.currentIndex = first;
        }
    }

    NImageUtils {
        id: files
    }

    OSUtils {
        id: osUtils
    }

    MachinePanel {
        id: machine

        x: 120
        width: 420
        desktop: osUtils
        pixels: root.pixels
    }

    RowLayout {
        anchors.fill: parent
        spacing: 0

        Pane {
            Layout.fillHeight: true
            Layout.preferredWidth: 280
            padding: 0
            background: Rectangle {
                color: root.palette.base
            }

            ColumnLayout {
                anchors.fill: parent
                spacing: 0

                ListView {
                    id: list

                    property bool follows: true // the work, until the user chooses a photograph
                    readonly property int latest: root.photographs.latest

                    Layout.fillWidth: true
                    Layout.fillHeight: true
                    clip: true
                    focus: true
                    model: root.photographs
                    currentIndex: 0
                    highlightMoveDuration: 0
                    keyNavigationEnabled: true
                    ScrollBar.vertical: ScrollBar {}
                    Keys.onPressed: list.follows = false
                    onLatestChanged: {
                        if (list.follows)
                            list.currentIndex = list.latest;
                    }

                    delegate: PhotographRow {
                        width: ListView.view.width
                        name: files.getFilename(path)
                        onChosen: {
                            list.follows = false;
                            list.currentIndex = index;
                        }
                    }
                }

                Label {
                    Layout.fillWidth: true
                    padding: 12
                    text: root.summary()
                    color: root.palette.placeholderText
                }

                ProgressBar {
                    Layout.fillWidth: true
                    to: root.photographs.count
                    value: root.photographs.finished
                }
            }
        }

        ColumnLayout {
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.margins: 16
            spacing: 12

            RowLayout {
                spacing: 16

                PictureView {
                    Layout.fillWidth: true
                    Layout.fillHeight: true
                    Layout.preferredWidth: 1 // both are equally wide
                    title: "Before"
                    path: root.selected?.path ?? ""
                    note: root.selected?.upright ?? ""
                    brushShare: root.brushShare
                }

                PictureView {
                    Layout.fillWidth: true
                    Layout.fillHeight: true
                    Layout.preferredWidth: 1 // both are equally wide
                    title: "After"
                    path: root.selected?.output ?? ""
                    note: root.selected?.outputSize ?? ""
                    brushShare: root.brushShare
                }
            }

            FactList {
                Layout.fillWidth: true
                photograph: root.selected
            }
        }
    }
}
