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

    function test_weightsOfNeighboursAddUpToOne(): void {
        for (const [b, c] of [[0, 0], [1, 0], [0, 0.5]])
            for (const at of [0, 0.25, 0.9])
                fuzzyCompare([-2, -1, 0, 1, 2, 3].reduce((sum, x) => sum + Library.filterWeight(b, c, x - at), 0), 1, 1e-9);
        fuzzyCompare(Library.filterWeight(1, 0, 0), 2 / 3, 1e-9);
        fuzzyCompare(Library.filterWeight(0, 0.5, 1.5), -1 / 16, 1e-9);
    }
}
