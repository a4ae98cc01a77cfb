// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound

import QtQuick
import Workbench

Item { // a photograph at a scale, around a point of it that stands in the middle
    id: root

    required property WorkbenchModel photographs
    required property int number
    required property int kind
    required property size whole // the pixels of the picture that the scale counts; empty while unknown
    required property real scaling // of those pixels to the units of the item
    required property point centre // in widths and heights of the picture
    property alias isUncropped: picture.isUncropped
    readonly property alias picture: picture

    readonly property bool isKnown: root.whole.width > 0
    readonly property real paintedWidth: root.isKnown ? root.whole.width * root.scaling : root.width
    readonly property real paintedHeight: root.isKnown ? root.whole.height * root.scaling : root.height
    readonly property real paintedLeft: root.start(root.width, root.paintedWidth, root.centre.x)
    readonly property real paintedTop: root.start(root.height, root.paintedHeight, root.centre.y)

    // Where a picture begins that is smaller than its place, or of which a part is seen.
    function start(length: real, painted: real, centre: real): real {
        if (painted <= length)
            return (length - painted) / 2;
        return Math.max(length - painted, Math.min(0, length / 2 - centre * painted));
    }

    clip: true

    PictureItem {
        id: picture

        x: Math.max(0, root.paintedLeft)
        y: Math.max(0, root.paintedTop)
        width: Math.min(root.width, root.paintedWidth)
        height: Math.min(root.height, root.paintedHeight)
        photographs: root.photographs
        number: root.number
        kind: root.kind
        part: Qt.rect(Math.max(0, -root.paintedLeft) / root.paintedWidth, Math.max(0, -root.paintedTop) / root.paintedHeight, width / root.paintedWidth, height / root.paintedHeight)
    }
}
