// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtQuick.Controls.Basic
import Workbench

ComponentTest {
    id: test

    name: "PhotographRow"
    component: PhotographRow {}

    function test_saysItsState_data(): var {
        return [{
                tag: "listed",
                stage: WorkbenchModel.Listed,
                text: "1 MB",
                name: "a.png"
            }, {
                tag: "waiting",
                stage: WorkbenchModel.Waiting,
                text: "waiting · 1 MB",
                name: "a.png, waiting"
            }, {
                tag: "failed",
                stage: WorkbenchModel.Failed,
                text: "failed · 1 MB",
                name: "a.png, failed"
            }];
    }

    function test_saysItsState(row: var): void {
        const item = test.make({
            photographs: test.photographs,
            index: 0,
            number: 0,
            path: "/a.png",
            name: "a.png",
            stage: row.stage,
            failure: row.tag === "failed" ? "It is empty." : "",
            output: "",
            sizes: "1 MB",
            factNames: [],
            factValues: [],
            pixels: Qt.size(60, 40),
            degrees: 0,
            crop: Qt.rect(0, 0, 0, 0),
            width: 250
        });
        compare(item.Accessible.name, row.name);
        const text = test.find(item, "text", row.text);
        verify(text);
        compare(String(text.color), String(row.tag === "failed" ? Style.failure : Style.mutedText));
        const chosen = test.spyOn(item, "chosen");
        mouseClick(item);
        compare(chosen.count, 1);
        mouseMove(item, 20, 20);
        mouseMove(item, 30, 30);
        tryVerify(() => item.ToolTip.visible === (row.tag === "failed"), 10000);
    }
}
