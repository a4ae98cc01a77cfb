// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Workbench

ComponentTest {
    id: test

    name: "Style"

    function linear(value: real): real {
        return value <= 0.04045 ? value / 12.92 : Math.pow((value + 0.055) / 1.055, 2.4);
    }

    function luminance(colour: color): real {
        return 0.2126 * test.linear(colour.r) + 0.7152 * test.linear(colour.g) + 0.0722 * test.linear(colour.b) + 0.05;
    }

    function test_textsCanBeRead_data(): var {
        return [{
                tag: "light",
                isDark: false
            }, {
                tag: "dark",
                isDark: true
            }];
    }

    function test_textsCanBeRead(row: var): void {
        Style.isDark = row.isDark;
        compare(Style.texts.length, Style.grounds.length);
        for (let i = 0; i < Style.texts.length; ++i) {
            const a = test.luminance(Style.texts[i]);
            const b = test.luminance(Style.grounds[i]);
            verify(Math.max(a, b) / Math.min(a, b) >= 4.5, Style.texts[i] + " on " + Style.grounds[i]);
        }
        Style.isDark = false;
    }
}
