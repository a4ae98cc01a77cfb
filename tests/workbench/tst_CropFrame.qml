// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtTest
import Workbench

Item {
    id: root

    width: 400
    height: 300

    CropFrame {
        id: frame

        anchors.fill: parent
        pixels: Qt.size(4000, 3000)
        degrees: 0
        place: Qt.rect(0, 0, 400, 300)
        onTurned: degrees => frame.degrees = degrees
    }

    TestCase {
        name: "CropFrame"
        when: windowShown

        function test_draggingTurns(): void {
            compare(frame.crop.width, 4000); // nothing is lost without a turn
            mousePress(frame, 380, 150);
            for (let y = 155; y <= 200; y += 5)
                mouseMove(frame, 380, y);
            mouseRelease(frame, 380, 200);
            verify(frame.degrees < -5 && frame.degrees > -20);
            verify(frame.crop.width < 4000);
            verify(Library.canCrop(frame.pixels, frame.degrees));
            verify(Math.abs(frame.crop.width / frame.crop.height - 4 / 3) < 0.01); // it keeps its shape
        }
    }
}
