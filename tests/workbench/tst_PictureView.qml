// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Workbench

ComponentTest {
    id: test

    name: "PictureView"
    component: PictureView {}

    function show(): PictureView {
        const view = test.make({
            photographs: test.photographs,
            number: 0,
            failure: "",
            degrees: 0,
            crop: Qt.rect(0, 0, 0, 0),
            width: 300,
            height: 200
        });
        tryVerify(() => view.whole.width === 60 && !view.isBusy, 20000);
        return view;
    }

    function test_zoomsAroundThePointer(): void {
        const view = test.show();
        compare(view.shownZoom, 1); // small pictures are not enlarged
        const clicked = Qt.point(155, 100); // the picture, 60 wide, is in the middle
        mouseWheel(view, clicked.x, clicked.y, 0, 1440);
        compare(view.shownZoom, 8);
        const left = 150 - view.centre.x * 480; // where the picture begins
        fuzzyCompare((clicked.x - left) / 8, 35, 0.5);
        view.pan(10000, 0);
        fuzzyCompare(view.centre.x, 1 - 150 / 480, 0.01); // as far as the picture reaches
        view.fit();
        compare(view.centre, Qt.point(0.5, 0.5));
        compare(view.shownZoom, 1);
        view.mode = PictureView.Sides;
        compare(view.paneWidth, (300 - Style.gap) / 2);
        view.failure = "It is empty.";
        verify(test.find(view, "text", "It is empty."));
    }

    function test_followsTwoFingers(): void {
        const view = test.show();
        const touch = touchEvent(view);
        touch.press(0, view, 60, 100).press(1, view, 80, 100).commit();
        for (let apart = 20; apart <= 80; apart += 10) {
            touch.move(0, view, 70 - apart / 2, 100).move(1, view, 70 + apart / 2, 100).commit();
            waitForRendering(view); // movements within one frame count as one
        }
        tryVerify(() => view.shownZoom > 1.2); // the first pixels are taken for a trembling hand
        touch.release(0, view, 30, 100).release(1, view, 110, 100).commit();
    }

    function test_blinks(): void {
        const view = test.show();
        view.mode = PictureView.Blink;
        for (const isBefore of [true, false, true]) {
            tryCompare(view, "showsBefore", isBefore);
            compare(test.find(view, "kind", PictureItem.Before) !== null, isBefore);
            compare(test.find(view, "kind", PictureItem.After) !== null, !isBefore);
        }
    }
}
