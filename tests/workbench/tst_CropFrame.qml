// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Workbench

ComponentTest {
    id: test

    name: "CropFrame"
    component: CropFrame {}

    function test_dragging_data(): var {
        return [{
                tag: "a corner",
                from: [396, 296],
                way: [-100, -60],
                crop: Qt.rect(0, 0, 3000, 2400)
            }, {
                tag: "an edge",
                from: [0, 150],
                way: [100, 40],
                crop: Qt.rect(1000, 0, 3000, 3000)
            }, {
                tag: "the inside, as far as the picture reaches",
                begin: Qt.rect(1000, 1000, 2000, 1000),
                from: [200, 150],
                way: [-150, 20],
                crop: Qt.rect(0, 1200, 2000, 1000)
            }, {
                tag: "outside, which turns",
                begin: Qt.rect(1000, 1000, 2000, 1000),
                from: [380, 150],
                way: [0, 60],
                degrees: -18.4
            }, {
                tag: "a corner of a turned one",
                begin: Qt.rect(1000, 1000, 2000, 1000),
                turned: 10,
                from: [306, 181],
                way: [300, 300]
            }];
    }

    function test_dragging(row: var): void {
        const frame = test.make({
            pixels: Qt.size(4000, 3000),
            degrees: row.turned ?? 0,
            crop: row.begin ?? Qt.rect(0, 0, 0, 0),
            place: Qt.rect(0, 0, 400, 300),
            width: 400,
            height: 300
        });
        frame.turned.connect(degrees => frame.degrees = degrees);
        frame.cropped.connect(crop => frame.crop = crop);
        const width = frame.shown.width;
        const height = frame.shown.height;
        mousePress(frame, row.from[0], row.from[1]);
        for (let i = 1; i <= 20; ++i)
            mouseMove(frame, row.from[0] + row.way[0] * i / 20, row.from[1] + row.way[1] * i / 20);
        mouseRelease(frame, row.from[0] + row.way[0], row.from[1] + row.way[1]);
        if (row.crop)
            compare(frame.shown, row.crop);
        fuzzyCompare(frame.degrees, row.degrees ?? row.turned ?? 0, 0.5);
        verify(Library.canCrop(frame.pixels, frame.shown, frame.degrees));
        if (row.turned)
            verify(frame.shown.width > width && frame.shown.height > height);
    }

    function test_keys(): void {
        const frame = test.make({
            pixels: Qt.size(4000, 3000),
            degrees: 0,
            crop: Qt.rect(100, 100, 500, 500),
            place: Qt.rect(0, 0, 400, 300)
        });
        frame.cropped.connect(crop => frame.crop = crop);
        frame.forceActiveFocus();
        keyClick(Qt.Key_Right);
        compare(frame.crop, Qt.rect(140, 100, 500, 500));
        keyClick(Qt.Key_Up, Qt.ControlModifier);
        compare(frame.crop, Qt.rect(140, 99, 500, 500));
        keyClick(Qt.Key_Down, Qt.ShiftModifier);
        compare(frame.crop, Qt.rect(140, 99, 500, 540));
    }
}
