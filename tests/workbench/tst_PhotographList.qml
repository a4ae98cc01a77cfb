// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Workbench

ComponentTest {
    id: test

    name: "PhotographList"
    component: PhotographList {}

    function test_filtersAndSorts(): void {
        const list = test.make({
            photographs: test.photographs,
            width: 250,
            height: 500
        });
        tryCompare(list, "number", 0);
        list.choose(1);
        compare(list.number, 1);
        list.search();
        keyClick(Qt.Key_A);
        tryCompare(list, "number", 0); // a.png alone
        keyClick(Qt.Key_Escape);
        keyClick(Qt.Key_Down);
        keyClick(Qt.Key_End);
        tryCompare(list, "number", 1);
        const order = test.find(list, "displayText", "Added");
        order.activated(3); // by size, the smaller b.png first, as soon as the sizes are known
        tryVerify(() => {
            list.choose(1);
            return list.currentIndex === 0;
        }, 20000);
        order.activated(0);
        list.choose(1);
        compare(list.currentIndex, 1);
        const states = test.find(list, "displayText", "All");
        states.activated(3); // those that failed: none
        tryCompare(list, "number", -1);
        verify(!test.find(list, "objectName", "retryFailed"));
        verify(test.find(list, "text", "2 photographs"));
    }
}
