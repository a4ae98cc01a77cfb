// SPDX-License-Identifier: Apache-2.0
import QtQuick
import NImageUtils 1.0
import Workbench

ComponentTest {
    id: test

    name: "MachinePanel"
    component: MachinePanel {}

    function test_saysWhatTheEstimateIsOf(): void {
        const panel = test.component.createObject(test, {
            desktop: desktop,
            pixels: Qt.size(4000, 3000)
        });
        compare([panel.duration(5), panel.duration(600), panel.duration(36000)], ["5 s", "10 min", "10 h"]);
        compare(panel.seconds, 0); // nothing is asked before it is shown
        panel.open();
        tryVerify(() => panel.opened);
        verify(panel.seconds > 0);
        verify(test.find(panel.contentItem, "objectName", "estimate"));
        panel.pixels = Qt.size(-1, -1);
        verify(!test.find(panel.contentItem, "objectName", "estimate")); // of what is unknown
        panel.destroy();
    }

    OSUtils {
        id: desktop
    }
}
