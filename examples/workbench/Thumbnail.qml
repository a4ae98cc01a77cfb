// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound

import QtQuick
import Workbench

Rectangle { // a photograph, small; an even surface until it is made
    id: root

    required property WorkbenchModel photographs
    required property int number

    color: picture.isReady ? "transparent" : Style.canvas

    PictureItem {
        id: picture

        readonly property real shape: picture.pixels.height > 0 ? picture.pixels.width / picture.pixels.height : 4 / 3

        anchors.centerIn: parent
        width: Math.min(root.width, root.height * picture.shape)
        height: Math.min(root.height, root.width / picture.shape)
        photographs: root.photographs
        number: root.number
        kind: PictureItem.Thumbnail
    }
}
