// SPDX-License-Identifier: Apache-2.0
//
// Lists the picture files named on the command line with their sizes, and the machine below. With --quit the window closes
// by itself.
pragma ComponentBehavior: Bound

import QtQuick
import NImageUtils 1.0

Window {
    id: window

    readonly property var words: Array.from(Qt.application.arguments)
    readonly property var files: words.filter(name => images.isSupportedFile(name))

    function describe(path: string): string {
        const size = images.imageSize(path);
        const text = size.width > 0 ? `${size.width} x ${size.height}` : "unreadable";
        return `${images.getFilename(path)}: ${text}${images.isRawFile(path) ? ", raw" : ""}`;
    }

    width: Math.min(480, desktop.maxWidth)
    height: 320
    visible: true
    title: files.length + " pictures"
    color: desktop.darkMode() ? "#202020" : "white"

    NImageUtils {
        id: images
    }

    OSUtils {
        id: desktop
    }

    ListView {
        anchors.fill: parent
        anchors.margins: 12
        model: window.files
        delegate: Text {
            required property string modelData
            text: window.describe(modelData)
            color: desktop.darkMode() ? "white" : "black"
            Component.onCompleted: console.log(text)
        }
        footer: Text {
            topPadding: 12
            text: desktop.cpuName()
            color: "grey"
        }
    }

    Timer {
        interval: 200
        running: window.words.includes("--quit")
        onTriggered: Qt.quit()
    }
}
