// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound

import QtQuick
import Workbench

Canvas { // the weight of a source pixel by its distance, from two pixels left to two pixels right
    id: root

    required property real b
    required property real c
    readonly property color ink: Style.accent
    readonly property color axis: Style.line

    function across(distance: real): real {
        return root.width / 2 + distance * (root.width - 2) / 4;
    }

    function down(weight: real): real {
        return root.height * (1.05 - weight) / 1.35; // from 1.05 down to -0.3
    }

    implicitHeight: 72
    Accessible.role: Accessible.Graphic
    Accessible.name: qsTr("Shape of the filter")
    onBChanged: root.requestPaint()
    onCChanged: root.requestPaint()
    onInkChanged: root.requestPaint()
    onPaint: {
        const context = root.getContext("2d");
        context.clearRect(0, 0, root.width, root.height);
        context.lineWidth = 1;
        context.strokeStyle = root.axis;
        context.beginPath();
        context.moveTo(0, Math.round(root.down(0)) + 0.5);
        context.lineTo(root.width, Math.round(root.down(0)) + 0.5);
        context.moveTo(Math.round(root.width / 2) + 0.5, 0);
        context.lineTo(Math.round(root.width / 2) + 0.5, root.height);
        context.stroke();
        context.lineWidth = 2;
        context.strokeStyle = root.ink;
        context.beginPath();
        for (let distance = -2; distance <= 2; distance += 0.05)
            context.lineTo(root.across(distance), root.down(Library.filterWeight(root.b, root.c, distance)));
        context.stroke();
    }
}
