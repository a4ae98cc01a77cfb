// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Workbench

ComponentTest {
    id: test

    name: "PictureView"
    component: PictureView {}

    function test_zoomsAroundThePointer(): void {
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
        compare(view.shownZoom, 1); // small pictures are not enlarged
        const clicked = Qt.point(155, 100); // the picture, 60 wide, is in the middle
        view.zoomTo(8, clicked);
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
}
