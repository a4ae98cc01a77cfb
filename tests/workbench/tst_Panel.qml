// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Workbench

ComponentTest {
    id: test

    name: "Panel"
    component: Panel {}

    function test_keepsKeysFromTheWindow(): void {
        const panel = test.component.createObject(test, {
            width: 200,
            height: 100
        });
        const outside = test.spyOn(area, "clicked");
        panel.open();
        tryVerify(() => panel.opened);
        verify(panel.modal);
        compare(panel.x, (test.width - panel.width) / 2);
        mouseClick(area, 5, 5); // closes the panel and does nothing else
        compare(outside.count, 0);
        tryVerify(() => !panel.visible);
        panel.destroy();
    }

    MouseArea {
        id: area

        anchors.fill: parent
    }
}
