// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Workbench

ComponentTest {
    id: test

    name: "PresetBar"
    component: PresetBar {}

    function test_savesAndUses(): void {
        const settings = test.photographs.settings;
        const bar = test.make({
            settings: settings,
            width: 400
        });
        settings.longEdge = 777;
        const names = test.find(bar, "editable", true);
        names.editText = "web";
        test.press(bar, "Save");
        compare(settings.presets, ["web"]);
        settings.longEdge = 5;
        names.activated(0);
        compare(settings.longEdge, 777);
        names.editText = "web";
        test.press(bar, "Delete");
        compare(settings.presets, []);
        settings.reset("longEdge");
        names.editText = " ";
        verify(!test.find(bar, "text", "Save").enabled);
    }
}
