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
        window: "#1f2123"
        windowText: "#e6e6e6"
        base: "#282a2d"
        text: "#e6e6e6"
        highlight: "#3d6ea8"
        mid: "#3a3d41"
        midlight: "#3a3d41"
        dark: "#5b8fd0"
        placeholderText: "#9a9fa5"
    }

    NImageUtils {
        id: files
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
                }

                PictureView {
                    Layout.fillWidth: true
                    Layout.fillHeight: true
                    Layout.preferredWidth: 1 // both are equally wide
                    title: "After"
                    path: root.selected?.output ?? ""
                    note: root.selected?.outputSize ?? ""
                }
            }

            FactList {
                Layout.fillWidth: true
                photograph: root.selected
            }
        }
    }
}
