// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound

import QtQuick
import Workbench

Item { // the crop rectangle, drawn over the photograph before its rotation
    id: root

    required property size pixels // of the photograph
    required property real degrees
    required property rect crop // in pixels of the photograph; empty: as large as possible
    required property rect place // where the photograph stands
    readonly property rect shown: root.crop.width > 0 ? root.crop : Library.largestCrop(root.pixels, root.degrees)
    readonly property real angle: Library.cropAngle(root.shown, root.degrees) // clockwise, in degrees
    readonly property real scaling: root.place.width / root.pixels.width
    readonly property int reach: 14 // around an edge or a corner that can be dragged

    signal turned(degrees: real)
    signal cropped(crop: rect)

    // `vector` as the frame sees it, whose axes are turned.
    function inFrame(vector: point): point {
        const radians = root.angle * Math.PI / 180;
        return Qt.point(vector.x * Math.cos(radians) + vector.y * Math.sin(radians), vector.y * Math.cos(radians) - vector.x * Math.sin(radians));
    }

    // Where `position` holds the frame: -1 and 1 are its edges, and 0 is between them, across and down. Farther than `reach`
    // outside the frame, both are 2.
    function holdAt(position: point): point {
        const way = root.inFrame(Qt.point(position.x - frame.x - frame.width / 2, position.y - frame.y - frame.height / 2));
        const across = Math.abs(way.x) - frame.width / 2;
        const down = Math.abs(way.y) - frame.height / 2;
        if (across > root.reach || down > root.reach)
            return Qt.point(2, 2);
        return Qt.point(across > -root.reach ? Math.sign(way.x) : 0, down > -root.reach ? Math.sign(way.y) : 0);
    }

    // `begin`, moved or with the edges moved that `hold` names, by `way` in pixels of the photograph. The opposite edges stay.
    function reshaped(begin: rect, hold: point, way: point): rect {
        if (hold.x === 0 && hold.y === 0)
            return Qt.rect(begin.x + way.x, begin.y + way.y, begin.width, begin.height);
        const grown = root.inFrame(way);
        const width = Math.max(2, begin.width + hold.x * grown.x);
        const height = Math.max(2, begin.height + hold.y * grown.y);
        const radians = root.angle * Math.PI / 180;
        const dx = hold.x * (width - begin.width) / 2;
        const dy = hold.y * (height - begin.height) / 2;
        const x = begin.x + begin.width / 2 + dx * Math.cos(radians) - dy * Math.sin(radians);
        const y = begin.y + begin.height / 2 + dx * Math.sin(radians) + dy * Math.cos(radians);
        return Qt.rect(x - width / 2, y - height / 2, width, height);
    }

    function change(begin: rect, hold: point, way: point): void {
        root.cropped(Library.nearestCrop(root.pixels, root.shown, root.reshaped(begin, hold, way), root.degrees));
    }

    // The direction of `position` from the middle of the frame, in degrees.
    function direction(position: point): real {
        return Math.atan2(position.y - frame.y - frame.height / 2, position.x - frame.x - frame.width / 2) * 180 / Math.PI;
    }

    function press(event: KeyEvent): void {
        const step = event.modifiers & Qt.ControlModifier ? 1 : Math.max(1, Math.round(root.pixels.width / 100));
        const isSizing = (event.modifiers & Qt.ShiftModifier) !== 0;
        const way = Qt.point(event.key === Qt.Key_Left ? -step : event.key === Qt.Key_Right ? step : 0, event.key === Qt.Key_Up ? -step : event.key === Qt.Key_Down ? step : 0);
        if (way.x === 0 && way.y === 0)
            return;
        root.change(root.shown, isSizing ? Qt.point(Math.abs(Math.sign(way.x)), Math.abs(Math.sign(way.y))) : Qt.point(0, 0), way);
        event.accepted = true;
    }

    clip: true
    activeFocusOnTab: true
    Accessible.role: Accessible.Graphic
    Accessible.name: qsTr("Crop of %1 × %2 pixels at %3, %4, turned by %5 degrees").arg(root.shown.width).arg(root.shown.height).arg(root.shown.x).arg(root.shown.y).arg(root.degrees.toFixed(1))
    Accessible.description: qsTr("Arrow keys move it, with Shift they change its size.")
    Accessible.focusable: true
    Keys.onPressed: event => root.press(event)

    Item {
        id: frame

        x: root.place.x + (root.shown.x + root.shown.width / 2) * root.scaling - width / 2
        y: root.place.y + (root.shown.y + root.shown.height / 2) * root.scaling - height / 2
        width: root.shown.width * root.scaling
        height: root.shown.height * root.scaling
        rotation: root.angle

        Repeater { // what is cropped away: above, below, left and right of the frame
            model: 4

            Rectangle {
                required property int index
                readonly property real far: root.width + root.height
                readonly property bool isBeside: index > 1

                x: index === 3 ? frame.width : -far
                y: isBeside ? 0 : index === 0 ? -far : frame.height
                width: isBeside ? far : frame.width + 2 * far
                height: isBeside ? frame.height : far
                color: "#90000000" // without antialiasing, which would leave seams between these four
            }
        }

        Repeater { // thirds, to level a horizon by
            model: 4

            Rectangle {
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

        Rectangle {
            anchors.fill: parent
            color: "transparent"
            border.width: 2
            border.color: root.activeFocus ? Style.accent : "white"
            antialiasing: true
        }

        Rectangle { // seen on white, too
            anchors.fill: parent
            anchors.margins: -1
            color: "transparent"
            border.color: "black"
            antialiasing: true
        }

        Repeater { // the places that can be dragged
            model: [Qt.point(0, 0), Qt.point(0.5, 0), Qt.point(1, 0), Qt.point(0, 0.5), Qt.point(1, 0.5), Qt.point(0, 1), Qt.point(0.5, 1), Qt.point(1, 1)]

            Rectangle {
                required property point modelData

                x: modelData.x * frame.width - width / 2
                y: modelData.y * frame.height - height / 2
                width: 11
                height: 11
                radius: 2
                color: "white"
                border.color: "black"
                antialiasing: true
            }
        }
    }

    HoverHandler {
        id: pointer

        cursorShape: {
            const hold = root.holdAt(drag.active ? drag.centroid.pressPosition : pointer.point.position);
            if (hold.x === 2)
                return Qt.PointingHandCursor;
            if (hold.x === 0 && hold.y === 0)
                return Qt.SizeAllCursor;
            if (hold.x === 0 || hold.y === 0)
                return hold.x === 0 ? Qt.SizeVerCursor : Qt.SizeHorCursor;
            return hold.x === hold.y ? Qt.SizeFDiagCursor : Qt.SizeBDiagCursor;
        }
    }

    TapHandler {
        onTapped: root.forceActiveFocus()
    }

    DragHandler { // moves the frame or its edges; outside the frame it turns the photograph
        id: drag

        property rect begin
        property point hold
        property real degrees: 0
        property real direction: 0

        target: null
        dragThreshold: 2
        onActiveChanged: {
            if (!drag.active)
                return;
            root.forceActiveFocus();
            drag.begin = root.shown;
            drag.hold = root.holdAt(drag.centroid.pressPosition);
            drag.degrees = root.degrees;
            drag.direction = root.direction(drag.centroid.pressPosition);
        }
        onCentroidChanged: {
            if (!drag.active)
                return;
            const position = drag.centroid.position;
            if (drag.hold.x === 2) {
                const turn = drag.direction - root.direction(position) + drag.degrees;
                root.turned(Math.round(10 * Math.max(-45, Math.min(45, turn))) / 10);
            } else {
                const press = drag.centroid.pressPosition;
                root.change(drag.begin, drag.hold, Qt.point((position.x - press.x) / root.scaling, (position.y - press.y) / root.scaling));
            }
        }
    }
}
