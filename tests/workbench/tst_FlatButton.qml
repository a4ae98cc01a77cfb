// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtQuick.Controls.Basic
import Workbench

ComponentTest {
    id: test

    name: "FlatButton"
    component: FlatButton {}

    function test_saysWhatItDoes_data(): var {
        return [{
                tag: "usual",
                help: "Opens",
                isMain: false
            }, {
                tag: "main",
                help: "",
                isMain: true
            }];
    }

    function test_saysWhatItDoes(row: var): void {
        const button = test.make({
            text: "Open",
            help: row.help,
            isMain: row.isMain
        });
        compare(button.Accessible.name, "Open");
        compare(button.Accessible.description, row.help);
        const clicked = test.spyOn(button, "clicked");
        button.forceActiveFocus(Qt.TabFocusReason);
        verify(button.visualFocus);
        keyClick(Qt.Key_Space);
        compare(clicked.count, 1);
        compare(String(button.background.color), String(row.isMain ? Style.accent : Style.control));
        mouseMove(button, 5, 5);
        tryCompare(button.background, "color", row.isMain ? Style.accent : Style.pressed);
        compare(button.ToolTip.visible, false); // only after a while
        if (row.help !== "")
            tryVerify(() => button.ToolTip.visible);
    }
}
