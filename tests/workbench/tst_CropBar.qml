// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Workbench

ComponentTest {
    id: test

    name: "CropBar"
    component: CropBar {}

    function test_turnsMirrorsAndResets(): void {
        const bar = test.make({
            photographs: test.photographs,
            number: 0,
            degrees: 0,
            crop: Qt.rect(1, 2, 30, 20),
            kept: Qt.size(30, 20),
            width: 800
        });
        verify(test.find(bar, "text", "30 × 20"));
        test.press(bar, "⟳");
        compare(test.fact(10), 6); // as an Exif orientation
        test.press(bar, "⇋");
        compare(test.fact(10), 5);
        test.press(bar, "⇋");
        test.press(bar, "⟲");
        compare(test.fact(10), 1);
        const field = test.find(bar, "label", "Turn in degrees");
        field.chosen(3);
        compare(test.fact(11), 3);
        test.photographs.setCrop(0, Qt.rect(1, 2, 30, 20));
        test.press(bar, "Reset");
        compare(test.fact(11), 0);
        compare(test.fact(12), Qt.rect(0, 0, 0, 0));
    }
}
