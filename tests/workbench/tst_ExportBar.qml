// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtTest
import Workbench

Item {
    id: root

    width: 800
    height: 100

    ExportBar {
        id: bar

        width: 800
        finished: 3
        remaining: 9
        secondsLeft: 150
        isPaused: false
        onPauseWanted: isPaused => bar.isPaused = isPaused
    }

    TestCase {
        name: "ExportBar"
        when: windowShown

        function test_timeAndPause(): void {
            compare(bar.timeText(), "about 3 min left");
            bar.pauseWanted(!bar.isPaused);
            compare(bar.timeText(), "paused");
            bar.pauseWanted(false);
            bar.secondsLeft = 0; // unknown
            compare(bar.timeText(), "");
            bar.remaining = 0;
            verify(!bar.visible);
        }
    }
}
