// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Workbench

ComponentTest {
    id: test

    name: "ExportBar"
    component: ExportBar {}

    function test_timeAndPause(): void {
        const bar = test.make({
            finished: 3,
            remaining: 9,
            secondsLeft: 150,
            isPaused: false,
            width: 800
        });
        bar.pauseWanted.connect(isPaused => bar.isPaused = isPaused);
        compare(bar.timeText(), "about 3 min left");
        test.press(bar, "Pause");
        compare(bar.timeText(), "paused");
        test.press(bar, "Continue");
        bar.secondsLeft = 0; // unknown
        compare(bar.timeText(), "");
        const cancelled = test.spyOn(bar, "cancelWanted");
        test.press(bar, "Cancel");
        compare(cancelled.count, 1);
        bar.remaining = 0;
        verify(!bar.visible);
    }
}
