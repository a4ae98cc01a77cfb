// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Workbench

ComponentTest {
    id: test

    name: "SettingRow"
    component: SettingRow {}

    function test_resets(): void {
        const row = test.make({
            name: "Size",
            help: "It keeps its shape.",
            width: 300
        });
        const reset = test.spyOn(row, "reset");
        compare(test.find(row, "text", "Reset").Accessible.name, "Reset Size");
        test.press(row, "Reset");
        compare(reset.count, 1);
        verify(test.find(row, "text", "It keeps its shape."));
        row.canReset = false;
        verify(!test.find(row, "text", "Reset"));
    }
}
