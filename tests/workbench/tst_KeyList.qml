// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Workbench

ComponentTest {
    id: test

    name: "KeyList"
    component: KeyList {}

    function test_eachKeyHasItsUse(): void {
        const keys = test.component.createObject(test);
        compare(keys.keys.length, keys.uses.length);
        keys.open();
        tryVerify(() => keys.opened);
        const key = test.find(keys.contentItem, "text", "Ctrl+E");
        const use = test.find(keys.contentItem, "text", "Export the photograph");
        compare(key.y, use.y);
        verify(keys.width <= test.width && keys.height <= test.height);
        keyClick(Qt.Key_Escape);
        tryVerify(() => !keys.visible);
        keys.destroy();
    }
}
