// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Workbench

ColumnLayout { // the photographs, filtered and sorted
    id: root

    required property WorkbenchModel photographs
    readonly property PhotographRow selected: list.currentItem as PhotographRow
    readonly property int number: root.selected?.number ?? -1
    property alias currentIndex: list.currentIndex

    function choose(number: int): void {
        list.currentIndex = shown.rowOf(number);
    }

    function search(): void {
        filter.forceActiveFocus();
    }

    function focusList(): void {
        list.forceActiveFocus();
    }

    // The neighbours of the photograph that is shown are made ready, the next one first.
    function prepare(): void {
        root.photographs.prepare([shown.numberAt(list.currentIndex + 1), shown.numberAt(list.currentIndex - 1)]);
    }

    function removeSelected(): void {
        const row = list.currentIndex;
        if (root.number >= 0)
            root.photographs.remove(root.number);
        list.currentIndex = Math.min(row, list.count - 1);
    }

    spacing: 0
    onNumberChanged: root.prepare()

    Timer { // Qt 6.8 leaves an index below 0 when the selected row is filtered out
        id: selectFirst

        interval: 0
        onTriggered: {
            if (list.currentIndex < 0 && list.count > 0)
                list.currentIndex = 0;
        }
    }

    PhotographFilter {
        id: shown

        photographs: root.photographs
    }

    TextField {
        id: filter

        Layout.fillWidth: true
        Layout.margins: Style.gap
        Layout.bottomMargin: 0
        implicitHeight: Style.controlHeight
        font.pixelSize: Style.textSize
        placeholderText: qsTr("Filter by name")
        color: Style.text
        placeholderTextColor: Style.mutedText
        Accessible.name: qsTr("Filter by name")
        onTextChanged: shown.text = filter.text
        Keys.onEscapePressed: filter.clear()
        Keys.onDownPressed: list.forceActiveFocus()
        background: Rectangle {
            radius: Style.radius
            color: Style.window
            border.width: filter.activeFocus ? 2 : 1
            border.color: filter.activeFocus ? Style.accent : Style.line
        }
    }

    RowLayout {
        Layout.fillWidth: true
        Layout.margins: Style.gap
        spacing: Style.gap

        ComboBox {
            id: state

            Layout.fillWidth: true
            Layout.preferredWidth: 1
            implicitHeight: Style.controlHeight
            font.pixelSize: Style.smallTextSize
            model: [qsTr("All"), qsTr("To export"), qsTr("Exported"), qsTr("Failed")]
            Accessible.name: qsTr("Which photographs are listed")
            onActivated: index => shown.state = index
        }

        ComboBox {
            id: order

            Layout.fillWidth: true
            Layout.preferredWidth: 1
            implicitHeight: Style.controlHeight
            font.pixelSize: Style.smallTextSize
            model: [qsTr("Added"), qsTr("Name"), qsTr("Date"), qsTr("Size")]
            Accessible.name: qsTr("Order of the photographs")
            onActivated: index => {
                const number = root.number;
                shown.order = index;
                root.choose(number);
            }
        }
    }

    ListView {
        id: list

        objectName: "list"
        Layout.fillWidth: true
        Layout.fillHeight: true
        clip: true
        focus: true
        activeFocusOnTab: true
        reuseItems: true
        model: shown
        currentIndex: 0
        highlightMoveDuration: 0
        keyNavigationEnabled: true
        onCountChanged: selectFirst.restart()
        ScrollBar.vertical: ScrollBar {}
        Accessible.role: Accessible.List
        Accessible.name: qsTr("Photographs")
        Keys.onPressed: event => {
            const page = Math.max(1, Math.floor(list.height / 64) - 1);
            switch (event.key) {
            case Qt.Key_Home:
                list.currentIndex = 0;
                break;
            case Qt.Key_End:
                list.currentIndex = list.count - 1;
                break;
            case Qt.Key_PageUp:
                list.currentIndex = Math.max(0, list.currentIndex - page);
                break;
            case Qt.Key_PageDown:
                list.currentIndex = Math.min(list.count - 1, list.currentIndex + page);
                break;
            case Qt.Key_Delete:
                root.removeSelected();
                break;
            default:
                return;
            }
            event.accepted = true;
        }

        delegate: PhotographRow {
            width: ListView.view.width
            photographs: root.photographs
            onChosen: {
                list.currentIndex = index;
                list.forceActiveFocus();
            }
        }
    }

    RowLayout {
        Layout.fillWidth: true
        Layout.margins: Style.gap
        spacing: Style.gap

        Text {
            Layout.fillWidth: true
            text: {
                const counts = [root.photographs.isListing ? qsTr("Reading folders …") : root.photographs.count === 1 ? qsTr("1 photograph") : qsTr("%1 photographs").arg(root.photographs.count)];
                if (root.photographs.exported > 0)
                    counts.push(qsTr("%1 exported").arg(root.photographs.exported));
                if (root.photographs.failed > 0)
                    counts.push(qsTr("%1 failed").arg(root.photographs.failed));
                return counts.join(" · ");
            }
            elide: Text.ElideRight
            font.pixelSize: Style.smallTextSize
            color: Style.mutedText
        }

        FlatButton {
            objectName: "retryFailed"
            visible: root.photographs.failed > 0
            text: qsTr("Try all again")
            help: qsTr("Exports every photograph that failed once more")
            Accessible.name: qsTr("Try all that failed again")
            onClicked: root.photographs.retryFailed()
        }
    }
}
