// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound

import QtQuick
import Workbench

Item { // what a turned picture leaves, on the picture before it is turned; dragging turns it
    id: root

    required property size pixels // of the picture
    required property real degrees
    required property rect place // where the picture stands
    readonly property rect crop: Library.cropOf(root.pixels, root.degrees)
    readonly property real scaling: root.place.width / root.pixels.width

    signal turned(degrees: real)

    // The direction from the middle of the picture, in degrees.
    function direction(position: point): real {
        const dx = position.x - root.place.x - root.place.width / 2;
        const dy = position.y - root.place.y - root.place.height / 2;
        return Math.atan2(dy, dx) * 180 / Math.PI;
    }

    Accessible.role: Accessible.Graphic
    Accessible.name: qsTr("Crop, turned by %1 degrees").arg(root.degrees.toFixed(1))

    Rectangle {
        id: frame

        x: root.place.x + root.place.width / 2 - width / 2
        y: root.place.y + root.place.height / 2 - height / 2
        width: root.crop.width * root.scaling
        height: root.crop.height * root.scaling
        rotation: Library.cropAngle(root.pixels, root.degrees)
        color: "transparent"
        border.width: 2
        border.color: "white"
        antialiasing: true

        Rectangle { // seen on white, too
            anchors.fill: parent
            anchors.margins: -1
            color: "transparent"
            border.color: "black"
            antialiasing: true
        }

        Repeater {
            model: 4

            Rectangle { // thirds, to level a horizon by
                required property int index
                readonly property bool isAcross: index % 2 === 0
                readonly property real share: index < 2 ? 1 / 3 : 2 / 3

                x: isAcross ? 0 : frame.width * share
                y: isAcross ? frame.height * share : 0
                width: isAcross ? frame.width : 1
                height: isAcross ? 1 : frame.height
                color: "#a0ffffff"
                antialiasing: true
            }
        }
    }

    DragHandler {
        id: drag

        property real begin: 0
        property real before: 0

        target: null
        cursorShape: Qt.SizeHorCursor
        onActiveChanged: {
            if (!drag.active)
                return;
            drag.before = root.degrees;
            drag.begin = root.direction(drag.centroid.pressPosition);
        }
        onCentroidChanged: {
            if (!drag.active)
                return;
            const turn = drag.begin - root.direction(drag.centroid.position) + drag.before;
            root.turned(Math.round(10 * Math.max(-45, Math.min(45, turn))) / 10);
        }
    }
}
