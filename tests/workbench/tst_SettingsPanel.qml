// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Workbench

ComponentTest {
    id: test

    name: "SettingsPanel"
    component: SettingsPanel {}

    function test_showsWhatTheFormatTakes_data(): var {
        return [{
                tag: "tiff",
                quality: false,
                depths: [0, 8, 16, 32],
                compressions: ["", "zip", "lzw", "packbits", "none"]
            }, {
                tag: "jpg",
                quality: true,
                depths: [0, 8],
                compressions: [""]
            }, {
                tag: "png",
                quality: false,
                depths: [0, 8, 16],
                compressions: [""]
            }];
    }

    function test_showsWhatTheFormatTakes(row: var): void {
        const settings = test.photographs.settings;
        const panel = test.make({
            settings: settings,
            width: 300,
            height: 1500
        });
        settings.format = "tiff";
        settings.bitDepth = 32;
        settings.compression = "lzw";
        settings.format = row.tag;
        compare(settings.bitDepth, row.depths.includes(32) ? 32 : 0); // what the format does not take is forgotten
        compare(settings.compression, row.compressions.includes("lzw") ? "lzw" : "");
        compare(settings.bitDepths, row.depths);
        compare(settings.compressions.slice().sort(), row.compressions.slice().sort());
        compare(test.find(panel, "objectName", "compression") !== null, row.compressions.length > 1);
        compare(test.find(panel, "name", "Quality").enabled, row.quality);
        settings.nameTemplate = "{nothing}";
        verify(test.find(panel, "help", settings.nameProblem));
        for (const setting of ["nameTemplate", "format", "bitDepth", "compression"])
            settings.reset(setting);
        compare(settings.format, "tiff");
    }
}
