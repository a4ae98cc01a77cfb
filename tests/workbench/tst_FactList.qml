// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Workbench

ComponentTest {
    id: test

    name: "FactList"
    component: FactList {
        names: ["Camera", "Size"]
        values: ["Imaginary 3", "a <b>"]
        width: 300
    }

    function test_namesStandBesideValues(): void {
        const list = test.make({});
        const value = test.find(list, "text", "a <b>");
        compare(value.Accessible.name, "Size: a <b>");
        compare(value.mapToItem(list, 0, 0).y, test.find(list, "text", "Size").mapToItem(list, 0, 0).y);
        verify(value.selectByMouse && value.readOnly);
    }
}
