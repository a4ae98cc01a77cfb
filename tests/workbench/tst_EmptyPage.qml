// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Workbench

ComponentTest {
    id: test

    name: "EmptyPage"
    component: EmptyPage {}

    function test_opens(): void {
        const page = test.make({
            photographs: test.photographs,
            width: 700,
            height: 400
        });
        const files = test.spyOn(page, "filesWanted");
        const folder = test.spyOn(page, "folderWanted");
        test.press(page, "Open photographs …");
        test.press(page, "Open a folder …");
        compare(files.count, 1);
        compare(folder.count, 1);
    }
}
