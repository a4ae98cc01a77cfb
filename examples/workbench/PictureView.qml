// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts

ColumnLayout { // a picture under its title; empty while there is no file
    id: root

    required property string title
    required property string path
    required property string note
    required property real brushShare // how wide the brush is, as a part of the width of the picture

    spacing: 6

    RowLayout {
        Label {
            text: root.title
            font.bold: true
        }

        Label {
            text: root.note
            color: root.palette.placeholderText
        }
    }

    Rectangle {
        Layout.fillWidth: true
        Layout.fillHeight: true
        color: root.palette.shadow
        clip: true

        Image {
            id: picture

            anchors.fill: parent
            anchors.margins: 1
            fillMode: Image.PreserveAspectFit
            asynchronous: true
            cache: false
            source: root.path === "" ? "" : "image://photograph/" + encodeURIComponent(root.path)
            sourceSize.width: 1600
            sourceSize.height: 1600

            HoverHandler {
                id: pointer

                enabled: picture.status === Image.Ready
                cursorShape: Qt.CrossCursor
            }

            Rectangle { // the brush
                x: pointer.point.position.x - width / 2
                y: pointer.point.position.y - height / 2
                width: root.brushShare * picture.paintedWidth
                height: width
                radius: width / 2
                visible: pointer.hovered
                color: "#30ffffff"
                border.color: "#ffffff"

                Rectangle { // seen on white, too
                    anchors.fill: parent
                    anchors.margins: -1
                    radius: width / 2
                    color: "transparent"
                    border.color: "#80000000"
                }
            }
        }

        BusyIndicator {
            anchors.centerIn: parent
            running: picture.status === Image.Loading
        }
    }
}
