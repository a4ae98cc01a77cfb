// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Workbench

ComponentTest {
    id: test

    name: "TopBar"
    component: TopBar {}

    function test_offersWhatCanBeDone(): void {
        const bar = test.make({
            view: view,
            hasPhotograph: false,
            hasPhotographs: false,
            width: 1100
        });
        verify(!test.find(bar, "text", "Export").enabled);
        bar.hasPhotograph = bar.hasPhotographs = true;
        const one = test.spyOn(bar, "exportWanted");
        const all = test.spyOn(bar, "exportAllWanted");
        test.press(bar, "Export");
        test.press(bar, "Export all");
        compare([one.count, all.count], [1, 1]);
        test.press(bar, "Crop");
        verify(view.isCropping);
        test.press(bar, "Settings");
        verify(!bar.showsSettings);
        test.press(bar, "100 %");
        compare(view.zoom, 1);
        verify(test.find(bar, "text", "100 %").checked);
        test.press(bar, "Fit");
        compare(view.zoom, 0);
    }

    PictureView {
        id: view

        photographs: test.photographs
        number: -1
        failure: ""
        degrees: 0
        crop: Qt.rect(0, 0, 0, 0)
    }
}
