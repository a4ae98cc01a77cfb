// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Workbench

ComponentTest {
    id: test

    name: "FilterPlot"
    component: FilterPlot {}

    function test_drawsAnotherCurve(): void {
        const plot = test.make({
            b: 0,
            c: 0,
            width: 200,
            height: 72
        });
        verify(plot.down(1) < plot.down(0)); // upwards is more
        compare(plot.across(2) - plot.across(-2), 198);
        tryVerify(() => plot.available);
        const before = grabImage(plot);
        plot.b = 1;
        tryVerify(() => !grabImage(plot).equals(before));
    }
}
