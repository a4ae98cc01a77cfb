// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtTest
import Workbench

Item {
    id: root

    width: 400
    height: 100

    MessageBar {
        id: bar

        width: 400
    }

    TestCase {
        name: "MessageBar"
        when: windowShown

        function test_goesAway(): void {
            verify(!bar.visible);
            bar.show("There is no photo.jpg any more.");
            verify(bar.visible);
            tryVerify(() => !bar.visible, 12000);
        }
    }
}
