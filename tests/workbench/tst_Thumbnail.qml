// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Workbench

ComponentTest {
    id: test

    name: "Thumbnail"
    component: Thumbnail {}

    function test_keepsTheShape(): void {
        const thumbnail = test.make({
            photographs: test.photographs,
            number: 0,
            width: 64,
            height: 64
        });
        const picture = thumbnail.children[0];
        tryVerify(() => picture.isReady, 20000);
        fuzzyCompare(picture.width / picture.height, 1.5, 0.05);
        fuzzyCompare(picture.y, (64 - picture.height) / 2, 0.5); // newer versions of Qt centre on whole pixels
    }
}
