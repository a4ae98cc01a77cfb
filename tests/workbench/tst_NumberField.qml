// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Workbench

ComponentTest {
    id: test

    name: "NumberField"
    component: NumberField {}

    function test_typedAndStepped(): void {
        const field = test.make({
            label: "Edge",
            number: 5,
            from: 1,
            to: 10
        });
        field.chosen.connect(value => field.number = value);
        field.forceActiveFocus();
        field.selectAll();
        for (const digit of ["4", "0"])
            keyClick(digit);
        keyClick(Qt.Key_Return);
        compare(field.number, 10); // within its bounds
        keyClick(Qt.Key_Down);
        compare(field.number, 9);
        field.text = "x";
        keyClick(Qt.Key_Return);
        compare(field.text, "9"); // what is no number changes nothing
    }
}
