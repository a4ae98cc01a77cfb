// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Workbench

ComponentTest {
    id: test

    name: "ZoomPane"
    component: ZoomPane {}

    function test_placesThePicture_data(): var {
        return [{
                tag: "smaller, in the middle",
                scaling: 0.5,
                centre: Qt.point(0.1, 0.9),
                left: 50,
                part: Qt.rect(0, 0, 1, 1)
            }, {
                tag: "larger, its middle",
                scaling: 4,
                centre: Qt.point(0.5, 0.5),
                left: -300,
                part: Qt.rect(0.375, 0.375, 0.25, 0.25)
            }, {
                tag: "larger, not beyond its edge",
                scaling: 4,
                centre: Qt.point(0, 1),
                left: 0,
                part: Qt.rect(0, 0.75, 0.25, 0.25)
            }];
    }

    function test_placesThePicture(row: var): void {
        const pane = test.make({
            photographs: test.photographs,
            number: -1,
            kind: PictureItem.Before,
            whole: Qt.size(200, 100),
            scaling: row.scaling,
            centre: row.centre,
            width: 200,
            height: 100
        });
        compare(pane.paintedLeft, row.left);
        compare(pane.picture.part, row.part);
        compare(pane.picture.x, Math.max(0, row.left));
    }
}
