// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound

import QtQuick
import Workbench

Item { // one bar per level of lightness; the tallest fills the height
    id: root

    required property list<int> counts
    readonly property real tallest: Math.max(1, ...root.counts)

    implicitWidth: 128
    implicitHeight: 48
    Accessible.role: Accessible.Graphic
    Accessible.name: qsTr("Histogram of the exported picture")

    Item { // not a Row, which leaves no place for bars without a height
        anchors.fill: parent
        anchors.bottomMargin: 1

        Repeater {
            model: root.counts

            Rectangle {
                id: bar

                required property int index
                required property int modelData

                x: bar.index * bar.width
                y: parent.height - bar.height
                width: root.width / root.counts.length
                height: parent.height * Math.sqrt(bar.modelData / root.tallest) // small counts can be seen
                color: Style.mutedText
            }
        }
    }

    Rectangle {
        anchors.bottom: parent.bottom
        width: parent.width
        height: 1
        color: Style.line
    }
}
