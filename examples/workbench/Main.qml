// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Dialogs
import QtQuick.Window
import NImageUtils 1.0
import Workbench

ApplicationWindow {
    id: root

    required property WorkbenchModel photographs
    readonly property PhotographRow selected: list.selected
    readonly property string output: root.selected?.output ?? ""
    readonly property bool isFullScreen: root.visibility === Window.FullScreen
    property int visibilityBefore: Window.Windowed

    // Files that are no photographs are listed, too, and the list says why they are not shown.
    function paste(): void {
        const paths = Array.from(osUtils.clipboard());
        if (paths.length === 0)
            messages.show(qsTr("The clipboard holds no photograph."));
        else
            root.photographs.add(paths.concat(Library.otherCopiedFiles(paths)));
    }

    function exportSelected(): void {
        if (list.number >= 0)
            root.photographs.exportOne(list.number);
    }

    function showOutput(): void {
        if (root.output === "")
            messages.show(qsTr("This photograph has not been exported yet."));
        else
            osUtils.showFileInGraphicalShell(root.output);
    }

    function toggleFullScreen(): void {
        if (root.isFullScreen) {
            root.visibility = root.visibilityBefore;
            return;
        }
        root.visibilityBefore = root.visibility;
        root.visibility = Window.FullScreen;
    }

    function stop(): void {
        if (view.isCropping)
            view.isCropping = false;
        else if (root.isFullScreen)
            root.toggleFullScreen();
        else
            root.photographs.cancelAll();
    }

    title: {
        const name = root.selected?.name ?? "";
        return name === "" ? "Workbench" : name + " – Workbench";
    }
    width: Math.min(1280, Screen.desktopAvailableWidth * 0.94)
    height: Math.min(800, Screen.desktopAvailableHeight * 0.9)
    minimumWidth: Math.min(720, Screen.desktopAvailableWidth)
    minimumHeight: Math.min(480, Screen.desktopAvailableHeight)
    visible: true
    color: Style.window
    palette {
        window: Style.window
        windowText: Style.text
        base: Style.window
        text: Style.text
        button: Style.control
        buttonText: Style.text
        light: Style.pressed
        midlight: Style.pressed
        mid: Style.line
        dark: Style.accent
        shadow: Style.canvas
        highlight: Style.accent
        highlightedText: Style.accentText
        placeholderText: Style.mutedText
        toolTipBase: Style.surface
        toolTipText: Style.text
    }
    Component.onCompleted: Style.isDark = osUtils.darkMode()
    onActiveChanged: {
        if (root.active)
            Style.isDark = osUtils.darkMode(); // it may have changed meanwhile
    }

    OSUtils {
        id: osUtils

        onFileMissing: path => messages.show(qsTr("There is no %1 any more.").arg(path))
        onShowFileError: path => messages.show(qsTr("No file manager was found. The file is %1").arg(path))
    }

    Connections {
        target: root.photographs

        function onAdded(first: int, count: int): void {
            messages.show(count === 1 ? qsTr("1 photograph was added.") : qsTr("%1 photographs were added.").arg(count));
            list.choose(first);
            list.focusList();
        }

        function onExportEnded(exported: int, failed: int): void {
            if (failed > 0)
                messages.show(qsTr("%1 exported, %2 failed. The list shows why at each of them.").arg(exported).arg(failed));
            else
                messages.show((exported === 1 ? qsTr("1 photograph was exported to %1") : qsTr("%1 photographs were exported to %2").arg(exported)).arg(root.photographs.settings.folder));
        }
    }

    FileDialog {
        id: fileDialog

        title: qsTr("Open photographs")
        fileMode: FileDialog.OpenFiles
        onAccepted: root.photographs.addUrls(fileDialog.selectedFiles)
    }

    FolderDialog {
        id: folderDialog

        property bool isRecursive: false

        function ask(isRecursive: bool): void {
            folderDialog.isRecursive = isRecursive;
            folderDialog.open();
        }

        title: folderDialog.isRecursive ? qsTr("Open a folder with its subfolders") : qsTr("Open a folder")
        onAccepted: root.photographs.addUrls([folderDialog.selectedFolder], folderDialog.isRecursive)
    }

    KeyList {
        id: keys
    }

    MachinePanel {
        id: machine

        desktop: osUtils
        pixels: root.selected?.pixels ?? Qt.size(-1, -1)
    }

    DropArea {
        id: drop

        anchors.fill: parent
        keys: ["text/uri-list"]
        onDropped: drop => root.photographs.addUrls(drop.urls)
    }

    TopBar {
        id: bar

        width: parent.width
        visible: !root.isFullScreen
        view: view
        hasPhotograph: list.number >= 0
        hasPhotographs: root.photographs.count > 0
        showsSettings: root.width >= 1000
        onFilesWanted: fileDialog.open()
        onFolderWanted: isRecursive => folderDialog.ask(isRecursive)
        onPasteWanted: root.paste()
        onExportWanted: root.exportSelected()
        onExportAllWanted: root.photographs.exportAll()
        onMachineWanted: machine.open()
        onKeysWanted: keys.open()
        onFullScreenWanted: root.toggleFullScreen()
        onClearWanted: root.photographs.clear()
    }

    MessageBar {
        id: messages

        objectName: "message"

        anchors.top: bar.visible ? bar.bottom : parent.top
        width: parent.width
        height: messages.visible ? messages.implicitHeight : 0
    }

    Item { // what is between the bars
        id: middle

        anchors.top: messages.bottom
        anchors.bottom: progress.top
        width: parent.width

        EmptyPage {
            anchors.fill: parent
            visible: root.photographs.count === 0
            photographs: root.photographs
            onFilesWanted: fileDialog.open()
            onFolderWanted: folderDialog.ask(false)
        }

        Rectangle {
            id: side

            width: visible ? root.width < 1000 ? 236 : 270 : 0
            height: parent.height
            visible: !root.isFullScreen && root.photographs.count > 0
            color: Style.surface

            PhotographList {
                id: list

                anchors.fill: parent
                photographs: root.photographs
            }
        }

        PictureView {
            id: view

            objectName: "view"
            anchors.left: side.right
            anchors.right: settings.left
            anchors.top: parent.top
            anchors.bottom: foot.top
            visible: root.photographs.count > 0
            photographs: root.photographs
            number: list.number
            failure: root.selected?.failure ?? ""
            degrees: root.selected?.degrees ?? 0
            crop: root.selected?.crop ?? Qt.rect(0, 0, 0, 0)
        }

        Item { // below the picture
            id: foot

            anchors.left: side.right
            anchors.right: settings.left
            anchors.bottom: parent.bottom
            height: !visible ? 0 : view.isCropping ? cropBar.implicitHeight + 2 * Style.gap : Math.max(facts.height, histogram.height, button.height) + 2 * Style.gap
            visible: !root.isFullScreen && root.photographs.count > 0

            CropBar {
                id: cropBar

                anchors.fill: parent
                anchors.margins: Style.gap
                visible: view.isCropping
                photographs: root.photographs
                number: list.number
                degrees: view.degrees
                crop: view.crop
                kept: Qt.size(view.keptCrop.width, view.keptCrop.height)
                onDone: view.isCropping = false
            }

            FactList {
                id: facts

                x: Style.gap
                y: Style.gap
                width: Math.max(0, (button.visible ? button.x : histogram.x) - Style.margin)
                visible: !view.isCropping
                names: root.selected?.factNames ?? []
                values: root.selected?.factValues ?? []
            }

            FlatButton {
                id: button

                readonly property bool isFailed: root.selected?.isFailed ?? false

                anchors.right: histogram.left
                anchors.margins: Style.margin
                y: Style.gap
                visible: !view.isCropping && (button.isFailed || root.output !== "")
                text: button.isFailed ? qsTr("Try again") : parent.width < 500 ? qsTr("Show") : qsTr("Show in file manager")
                Accessible.name: button.isFailed ? qsTr("Try again") : qsTr("Show in file manager")
                onClicked: button.isFailed ? root.exportSelected() : root.showOutput()
            }

            Histogram {
                id: histogram

                anchors.right: parent.right
                anchors.margins: Style.gap
                y: Style.gap
                visible: !view.isCropping && histogram.counts.length > 0
                counts: view.histogram
            }
        }

        SettingsPanel {
            id: settings

            anchors.right: parent.right
            width: visible ? 300 : 0
            height: parent.height
            visible: bar.showsSettings && !root.isFullScreen && root.photographs.count > 0
            settings: root.photographs.settings
        }
    }

    ExportBar {
        id: progress

        anchors.bottom: parent.bottom
        width: parent.width
        height: progress.visible ? progress.implicitHeight : 0
        finished: root.photographs.finished
        remaining: root.photographs.remaining
        secondsLeft: root.photographs.secondsLeft
        isPaused: root.photographs.isPaused
        onPauseWanted: isPaused => root.photographs.isPaused = isPaused
        onCancelWanted: root.photographs.cancelAll()
    }

    Rectangle { // what is dragged over the window may be dropped
        anchors.fill: parent
        visible: drop.containsDrag
        color: "transparent"
        border.width: 4
        border.color: Style.accent
    }

    Shortcut {
        sequences: ["Ctrl+O"]
        onActivated: fileDialog.open()
    }

    Shortcut {
        sequences: ["Ctrl+Shift+O"]
        onActivated: folderDialog.ask(false)
    }

    Shortcut {
        sequences: ["Ctrl+V"]
        onActivated: root.paste()
    }

    Shortcut {
        sequences: ["Ctrl+F"]
        onActivated: list.search()
    }

    Shortcut {
        sequences: ["Ctrl+E"]
        onActivated: root.exportSelected()
    }

    Shortcut {
        sequences: ["Ctrl+Shift+E"]
        onActivated: root.photographs.exportAll()
    }

    Shortcut {
        sequences: ["Ctrl+P"]
        onActivated: root.photographs.isPaused = !root.photographs.isPaused
    }

    Shortcut {
        sequences: ["Escape"]
        onActivated: root.stop()
    }

    Shortcut {
        sequences: ["Ctrl+J"]
        onActivated: root.showOutput()
    }

    Shortcut {
        sequences: ["1"]
        onActivated: view.mode = PictureView.Split
    }

    Shortcut {
        sequences: ["2"]
        onActivated: view.mode = PictureView.Sides
    }

    Shortcut {
        sequences: ["3"]
        onActivated: view.mode = PictureView.Blink
    }

    Shortcut {
        sequences: ["4"]
        onActivated: view.mode = PictureView.Before
    }

    Shortcut {
        sequences: ["5"]
        onActivated: view.mode = PictureView.After
    }

    Shortcut {
        sequences: ["F"]
        onActivated: view.fit()
    }

    Shortcut {
        sequences: ["Z"]
        onActivated: view.zoomBy(1 / view.shownZoom)
    }

    Shortcut {
        sequences: ["+", "="]
        onActivated: view.zoomBy(1.25)
    }

    Shortcut {
        sequences: ["-"]
        onActivated: view.zoomBy(0.8)
    }

    Shortcut {
        sequences: ["["]
        onActivated: root.photographs.turn(list.number, -1)
    }

    Shortcut {
        sequences: ["]"]
        onActivated: root.photographs.turn(list.number, 1)
    }

    Shortcut {
        sequences: ["C"]
        enabled: list.number >= 0
        onActivated: view.isCropping = !view.isCropping
    }

    Shortcut {
        sequences: ["Ctrl+,"]
        onActivated: bar.showsSettings = !bar.showsSettings
    }

    Shortcut {
        sequences: ["F11"]
        onActivated: root.toggleFullScreen()
    }

    Shortcut {
        sequences: ["F1"]
        onActivated: keys.open()
    }

    Shortcut {
        sequences: ["Ctrl+Q"]
        context: Qt.ApplicationShortcut // over an open panel, too
        onActivated: Qt.quit()
    }
}
