// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Workbench

ComponentTest {
    id: test

    name: "Histogram"
    component: Histogram {
        counts: [0, 100, 25]
        width: 30
        height: 41
    }

    function test_tallestFillsTheHeight(): void {
        const histogram = test.make({});
        const third = test.find(histogram, "modelData", 25);
        compare([third.x, third.y, third.width, third.height], [20, 20, 10, 20]);
        compare(test.find(histogram, "modelData", 100).height, 40);
    }
}
