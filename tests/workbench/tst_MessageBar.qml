// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Workbench

ComponentTest {
    id: test

    name: "MessageBar"
    component: MessageBar {}

    function test_goesAway(): void {
        const bar = test.make({
            width: 400
        });
        verify(!bar.visible);
        bar.show("There is no photo.jpg any more.");
        verify(bar.visible);
        tryVerify(() => !bar.visible, 12000);
    }
}
