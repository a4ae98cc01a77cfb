// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import QtQuick.Dialogs
import QtQuick.Window
import Workbench

ScrollView { // how photographs are exported
    id: root

    required property SettingsModel settings
    readonly property list<string> formats: ["tiff", "jpg", "png", "webp", "avif", "heic", "jp2", "exr", "preserve"]
    readonly property list<string> formatNames: ["TIFF", "JPEG", "PNG", "WebP", "AVIF", "HEIF", "JPEG 2000", "OpenEXR", qsTr("as the original")]
    readonly property list<string> profiles: ["keep", "srgb"]
    readonly property Item focused: root.Window.activeFocusItem

    // Scrolls to what the keyboard has reached in the panel.
    function reveal(item: Item): void {
        let ancestor = item;
        while (ancestor && ancestor !== column)
            ancestor = ancestor.parent;
        if (!ancestor)
            return;
        const view = root.contentItem as Flickable;
        const top = item.mapToItem(column, 0, 0).y;
        view.contentY = Math.max(0, Math.min(top - Style.margin, Math.max(view.contentY, top + item.height + Style.margin - view.height)));
    }

    contentWidth: availableWidth
    onFocusedChanged: root.reveal(root.focused)
    Accessible.role: Accessible.Pane
    Accessible.name: qsTr("Settings")
    padding: Style.margin
    bottomPadding: 0
    background: Rectangle {
        color: Style.surface
    }

    FileDialog {
        id: profileDialog

        title: qsTr("Choose a colour profile")
        nameFilters: [qsTr("Colour profiles (*.icc *.icm)")]
        onAccepted: root.settings.profile = Library.pathOf(profileDialog.selectedFile)
    }

    FolderDialog {
        id: folderDialog

        title: qsTr("Choose the folder for exported photographs")
        onAccepted: root.settings.folder = Library.pathOf(folderDialog.selectedFolder)
    }

    ColumnLayout {
        id: column

        width: root.availableWidth
        spacing: Style.margin

        SettingRow {
            name: qsTr("Presets")
            help: qsTr("Choose settings that you have kept, or keep these under a name.")
            canReset: false

            PresetBar {
                Layout.fillWidth: true
                settings: root.settings
            }
        }

        SettingRow {
            name: qsTr("Size")
            help: qsTr("Photographs keep their shape. Limits in pixels never enlarge.")
            onReset: {
                for (const setting of ["sizing", "longEdge", "width", "height", "percent"])
                    root.settings.reset(setting);
            }

            ComboBox {
                id: sizing

                Layout.fillWidth: true
                implicitHeight: Style.controlHeight
                font.pixelSize: Style.textSize
                model: [qsTr("Original"), qsTr("Long edge"), qsTr("Fit into"), qsTr("Scale")]
                currentIndex: root.settings.sizing
                Accessible.name: qsTr("Kind of size")
                onActivated: index => root.settings.sizing = index
            }

            NumberField {
                label: qsTr("Long edge in pixels")
                visible: root.settings.sizing === SettingsModel.LongEdge
                number: root.settings.longEdge
                from: 1
                to: 100000
                step: 10
                onChosen: value => root.settings.longEdge = value
            }

            NumberField {
                label: qsTr("Width in pixels")
                visible: root.settings.sizing === SettingsModel.Box
                implicitWidth: 60
                number: root.settings.width
                from: 1
                to: 100000
                step: 10
                onChosen: value => root.settings.width = value
            }

            NumberField {
                label: qsTr("Height in pixels")
                visible: root.settings.sizing === SettingsModel.Box
                implicitWidth: 60
                number: root.settings.height
                from: 1
                to: 100000
                step: 10
                onChosen: value => root.settings.height = value
            }

            NumberField {
                objectName: "percent"
                label: qsTr("Scale in per cent")
                visible: root.settings.sizing === SettingsModel.Scale
                number: root.settings.percent
                from: 0.1
                to: 800
                digits: 1
                onChosen: value => root.settings.percent = value
            }

            Text {
                visible: root.settings.sizing !== SettingsModel.Original
                text: root.settings.sizing === SettingsModel.Scale ? "%" : qsTr("px")
                font.pixelSize: Style.textSize
                color: Style.mutedText
            }
        }

        SettingRow {
            name: qsTr("Filter")
            help: qsTr("How pixels are mixed when the size changes: B blurs, C sharpens. ⅓ and ⅓ suit most photographs.")
            onReset: {
                root.settings.reset("filterB");
                root.settings.reset("filterC");
            }

            FilterPlot {
                Layout.fillWidth: true
                b: root.settings.filterB
                c: root.settings.filterC
            }

            ColumnLayout {
                spacing: 4

                RowLayout {
                    Text {
                        text: "B"
                        font.pixelSize: Style.textSize
                        color: Style.mutedText
                    }

                    NumberField {
                        label: qsTr("Filter parameter B")
                        implicitWidth: 56
                        number: root.settings.filterB
                        to: 2
                        step: 0.05
                        digits: 2
                        onChosen: value => root.settings.filterB = value
                    }
                }

                RowLayout {
                    Text {
                        text: "C"
                        font.pixelSize: Style.textSize
                        color: Style.mutedText
                    }

                    NumberField {
                        label: qsTr("Filter parameter C")
                        implicitWidth: 56
                        number: root.settings.filterC
                        to: 2
                        step: 0.05
                        digits: 2
                        onChosen: value => root.settings.filterC = value
                    }
                }
            }
        }

        SettingRow {
            name: qsTr("Format")
            help: qsTr("TIFF and PNG lose nothing; JPEG opens everywhere.")
            onReset: root.settings.reset("format")

            ComboBox {
                Layout.fillWidth: true
                implicitHeight: Style.controlHeight
                font.pixelSize: Style.textSize
                model: root.formatNames
                currentIndex: root.formats.indexOf(root.settings.format)
                displayText: currentIndex < 0 ? root.settings.format : currentText
                Accessible.name: qsTr("Format")
                onActivated: index => root.settings.format = root.formats[index]
            }
        }

        SettingRow {
            name: qsTr("Quality")
            help: root.settings.hasQuality ? qsTr("From 1 to 100. Above 90 the difference is hard to see.") : qsTr("This format loses nothing, so it has no quality.")
            enabled: root.settings.hasQuality
            onReset: root.settings.reset("quality")

            Slider {
                Layout.fillWidth: true
                from: 1
                to: 100
                stepSize: 1
                value: root.settings.quality
                Accessible.name: qsTr("Quality in per cent")
                onMoved: root.settings.quality = value
            }

            NumberField {
                label: qsTr("Quality in per cent")
                implicitWidth: 48
                number: root.settings.quality
                from: 1
                onChosen: value => root.settings.quality = value
            }

            Text {
                text: "%"
                font.pixelSize: Style.textSize
                color: Style.mutedText
            }
        }

        SettingRow {
            name: qsTr("Bits per channel")
            help: qsTr("More than 8 leave room for later changes. Floats have 32, in OpenEXR also 16.")
            visible: root.settings.bitDepths.length > 2
            onReset: root.settings.reset("bitDepth")

            ComboBox {
                objectName: "bitDepth"
                Layout.fillWidth: true
                implicitHeight: Style.controlHeight
                font.pixelSize: Style.textSize
                model: Array.from(root.settings.bitDepths).map(bits => bits === 0 ? qsTr("as the original") : qsTr("%1 bits").arg(bits))
                currentIndex: Array.from(root.settings.bitDepths).indexOf(root.settings.bitDepth)
                Accessible.name: qsTr("Bits per channel")
                onActivated: index => root.settings.bitDepth = root.settings.bitDepths[index]
            }
        }

        SettingRow {
            name: qsTr("Compression")
            help: qsTr("All of them lose nothing. ZIP is small, none is fast.")
            visible: root.settings.compressions.length > 2
            onReset: root.settings.reset("compression")

            ComboBox {
                objectName: "compression"
                Layout.fillWidth: true
                implicitHeight: Style.controlHeight
                font.pixelSize: Style.textSize
                model: Array.from(root.settings.compressions).map(name => name === "" ? qsTr("usual") : name === "none" ? qsTr("none") : name.toUpperCase())
                currentIndex: Array.from(root.settings.compressions).indexOf(root.settings.compression)
                Accessible.name: qsTr("Compression")
                onActivated: index => root.settings.compression = root.settings.compressions[index]
            }
        }

        SettingRow {
            name: qsTr("Colours")
            help: qsTr("Web pages and most programs expect sRGB.")
            onReset: root.settings.reset("profile")

            ComboBox {
                Layout.fillWidth: true
                implicitHeight: Style.controlHeight
                font.pixelSize: Style.textSize
                model: [qsTr("as the original"), "sRGB", qsTr("Profile from a file …")]
                currentIndex: Math.max(0, root.profiles.indexOf(root.settings.profile))
                displayText: root.profiles.includes(root.settings.profile) ? currentText : root.settings.profile.split("/").pop()
                Accessible.name: qsTr("Colour profile")
                onActivated: index => {
                    if (index < 2)
                        root.settings.profile = root.profiles[index];
                    else
                        profileDialog.open();
                }
            }
        }

        SettingRow {
            name: qsTr("Rendering intent")
            help: qsTr("What becomes of colours that the profile cannot hold: all move together, or only they are clipped.")
            onReset: root.settings.reset("intent")

            ComboBox {
                Layout.fillWidth: true
                implicitHeight: Style.controlHeight
                font.pixelSize: Style.textSize
                model: [qsTr("perceptual"), qsTr("relative")]
                currentIndex: root.settings.intent
                Accessible.name: qsTr("Rendering intent")
                onActivated: index => root.settings.intent = index
            }
        }

        SettingRow {
            name: qsTr("Metadata")
            help: qsTr("Camera, time and place, as the original has them.")
            onReset: root.settings.reset("metadata")

            ComboBox {
                Layout.fillWidth: true
                implicitHeight: Style.controlHeight
                font.pixelSize: Style.textSize
                model: [qsTr("all"), qsTr("all but the place"), qsTr("none")]
                currentIndex: root.settings.metadata
                Accessible.name: qsTr("Metadata")
                onActivated: index => root.settings.metadata = index
            }
        }

        SettingRow {
            name: qsTr("Name")
            help: root.settings.nameProblem !== "" ? root.settings.nameProblem : qsTr("{name} is the name of the original, {folder} that of its folder, {number} its place in the list, {date} the day when it was taken.")
            onReset: root.settings.reset("nameTemplate")

            TextField {
                id: nameTemplate

                Layout.fillWidth: true
                implicitHeight: Style.controlHeight
                font.pixelSize: Style.textSize
                text: root.settings.nameTemplate
                selectByMouse: true
                color: root.settings.nameProblem === "" ? Style.text : Style.failure
                Accessible.name: qsTr("Name of exported photographs")
                onTextEdited: root.settings.nameTemplate = nameTemplate.text
            }
        }

        SettingRow {
            name: qsTr("Folder")
            help: qsTr("No file is overwritten: a name that is taken gets a number.")
            canReset: false

            TextField {
                id: folder

                Layout.fillWidth: true
                implicitHeight: Style.controlHeight
                font.pixelSize: Style.textSize
                text: root.settings.folder
                selectByMouse: true
                color: Style.text
                Accessible.name: qsTr("Folder for exported photographs")
                onEditingFinished: root.settings.folder = folder.text
            }

            FlatButton {
                text: qsTr("Choose …")
                onClicked: folderDialog.open()
            }
        }
    }
}
