// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Window
import Workbench

FocusScope { // a photograph before and after its export
    id: root

    enum Mode {
        Split,
        Sides,
        Blink,
        Before,
        After
    }

    required property WorkbenchModel photographs
    required property int number
    required property string failure // of the export
    required property real degrees
    required property rect crop
    property int mode: PictureView.Split
    property bool isCropping: false
    property real zoom: 0 // pixels of the screen for one of the exported picture; 0 fits it in
    property point centre: Qt.point(0.5, 0.5)
    property real divider: 0.5
    property bool showsBefore: false // while blinking

    readonly property bool hasSides: root.mode === PictureView.Sides && !root.isCropping
    readonly property real ratio: Screen.devicePixelRatio
    readonly property real paneWidth: root.hasSides ? (root.width - Style.gap) / 2 : root.width
    readonly property size whole: root.isCropping || after.picture.pixels.width <= 0 ? before.picture.pixels : after.picture.pixels
    readonly property int surround: root.isCropping ? 40 : 0 // beside a photograph with a frame, from where it can be turned
    readonly property real fitting: root.whole.width > 0 ? Math.min(1, Math.max(40, root.paneWidth - 2 * root.surround) * root.ratio / root.whole.width, Math.max(40, root.height - 2 * root.surround) * root.ratio / root.whole.height) : 1
    readonly property rect keptCrop: cropFrame.shown
    readonly property real shownZoom: root.zoom > 0 ? root.zoom : root.fitting
    readonly property real scaling: root.shownZoom / root.ratio
    readonly property bool isBusy: before.picture.isBusy || after.picture.isBusy
    readonly property string trouble: root.failure !== "" ? root.failure : before.picture.failure !== "" ? before.picture.failure : after.picture.failure
    readonly property list<int> histogram: after.picture.histogram

    // Zooms around `position`, which keeps the point of the picture that is there.
    function zoomTo(zoom: real, position: point): void {
        const bounded = Math.max(Math.min(0.02, root.fitting), Math.min(32, zoom));
        const pane = root.hasSides && position.x > root.paneWidth ? position.x - root.paneWidth - Style.gap : position.x;
        const x = (pane - after.paintedLeft) / after.paintedWidth;
        const y = (position.y - after.paintedTop) / after.paintedHeight;
        root.zoom = bounded;
        root.lookAt(x - (pane - root.paneWidth / 2) / after.paintedWidth, y - (position.y - root.height / 2) / after.paintedHeight);
    }

    function zoomBy(factor: real): void {
        root.zoomTo(root.shownZoom * factor, Qt.point(root.paneWidth / 2, root.height / 2));
    }

    function fit(): void {
        root.zoom = 0;
        root.centre = Qt.point(0.5, 0.5);
    }

    // The middle of the view, as far as the picture reaches.
    function lookAt(x: real, y: real): void {
        root.centre = Qt.point(root.bounded(x, root.paneWidth / after.paintedWidth), root.bounded(y, root.height / after.paintedHeight));
    }

    function bounded(middle: real, share: real): real {
        return share >= 1 ? 0.5 : Math.max(share / 2, Math.min(1 - share / 2, middle));
    }

    function pan(dx: real, dy: real): void {
        root.lookAt(root.centre.x + dx / after.paintedWidth, root.centre.y + dy / after.paintedHeight);
    }

    clip: true
    activeFocusOnTab: true
    Accessible.role: Accessible.Graphic
    Accessible.name: qsTr("Photograph before and after export, at %1 %").arg(Math.round(root.shownZoom * 100))
    Keys.onLeftPressed: root.pan(-60, 0)
    Keys.onRightPressed: root.pan(60, 0)
    Keys.onUpPressed: root.pan(0, -60)
    Keys.onDownPressed: root.pan(0, 60)
    onNumberChanged: root.fit()

    Rectangle {
        anchors.fill: parent
        color: Style.canvas
    }

    ZoomPane {
        id: after

        x: root.hasSides ? root.paneWidth + Style.gap : 0
        width: root.paneWidth
        height: root.height
        visible: root.mode !== PictureView.Before && !root.isCropping && !(root.mode === PictureView.Blink && root.showsBefore)
        photographs: root.photographs
        number: root.number
        kind: PictureItem.After
        whole: root.whole
        scaling: root.scaling
        centre: root.centre
    }

    Item { // the pane behind the divider
        width: root.mode === PictureView.Split && !root.isCropping ? Math.round(root.width * root.divider) : root.paneWidth
        height: root.height
        clip: true
        visible: root.isCropping || root.mode !== PictureView.After && !(root.mode === PictureView.Blink && !root.showsBefore)

        ZoomPane {
            id: before

            width: root.paneWidth
            height: root.height
            photographs: root.photographs
            number: root.number
            kind: PictureItem.Before
            isUncropped: root.isCropping
            whole: root.whole
            scaling: root.scaling
            centre: root.centre
        }
    }

    Timer {
        running: root.mode === PictureView.Blink && !root.isCropping && root.number >= 0
        interval: 700
        repeat: true
        onTriggered: root.showsBefore = !root.showsBefore
    }

    DragHandler {
        id: hand

        property point begin

        target: null
        enabled: !root.isCropping
        cursorShape: hand.active ? Qt.ClosedHandCursor : undefined
        onActiveChanged: hand.begin = root.centre
        onTranslationChanged: {
            if (hand.active)
                root.lookAt(hand.begin.x - hand.translation.x / after.paintedWidth, hand.begin.y - hand.translation.y / after.paintedHeight);
        }
    }

    PinchHandler {
        id: pinch

        property real begin: 1

        target: null
        onActiveChanged: pinch.begin = root.shownZoom
        onActiveScaleChanged: {
            if (pinch.active)
                root.zoomTo(pinch.begin * pinch.activeScale, pinch.centroid.position);
        }
    }

    WheelHandler {
        id: wheel

        target: null
        acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
        onWheel: event => root.zoomTo(root.shownZoom * Math.pow(2, event.angleDelta.y / 480), Qt.point(event.x, event.y))
    }

    TapHandler {
        onTapped: root.forceActiveFocus()
        onDoubleTapped: eventPoint => {
            if (root.zoom > 0)
                root.fit();
            else
                root.zoomTo(1, eventPoint.position);
        }
    }

    Item { // the divider
        id: grip

        objectName: "divider"
        visible: root.mode === PictureView.Split && !root.isCropping && before.picture.isReady
        x: Math.round(root.width * root.divider) - width / 2
        width: 24
        height: root.height
        activeFocusOnTab: true
        Accessible.role: Accessible.Slider
        Accessible.name: qsTr("Divider between before and after")
        Keys.onLeftPressed: root.divider = Math.max(0, root.divider - 0.02)
        Keys.onRightPressed: root.divider = Math.min(1, root.divider + 0.02)

        Rectangle {
            anchors.horizontalCenter: parent.horizontalCenter
            width: 4
            height: parent.height
            color: "black"
            opacity: 0.6
        }

        Rectangle {
            anchors.horizontalCenter: parent.horizontalCenter
            width: 2
            height: parent.height
            color: "white"
        }

        Rectangle {
            anchors.centerIn: parent
            width: 24
            height: 36
            radius: 12
            color: "white"
            border.width: grip.activeFocus ? 3 : 1
            border.color: grip.activeFocus ? Style.accent : "#808080"

            Text {
                anchors.centerIn: parent
                text: "◂▸"
                font.pixelSize: 11
                color: "black"
            }
        }

        HoverHandler {
            cursorShape: Qt.SplitHCursor
        }

        DragHandler {
            id: dividerDrag

            property real begin: 0

            target: null
            grabPermissions: PointerHandler.CanTakeOverFromAnything
            onActiveChanged: dividerDrag.begin = root.divider
            onTranslationChanged: {
                if (dividerDrag.active)
                    root.divider = Math.max(0, Math.min(1, dividerDrag.begin + dividerDrag.translation.x / root.width));
            }
        }
    }

    CropFrame {
        id: cropFrame

        objectName: "cropFrame"
        anchors.fill: parent
        visible: root.isCropping && before.picture.isReady
        pixels: before.picture.pixels.width > 0 ? before.picture.pixels : Qt.size(1, 1)
        degrees: root.degrees
        crop: root.crop
        place: Qt.rect(before.paintedLeft, before.paintedTop, before.paintedWidth, before.paintedHeight)
        onTurned: degrees => root.photographs.setDegrees(root.number, degrees)
        onCropped: crop => root.photographs.setCrop(root.number, crop)
    }

    Repeater {
        model: [qsTr("Before"), qsTr("After")]

        Rectangle {
            id: caption

            required property int index
            required property string modelData
            readonly property bool isBefore: caption.index === 0
            readonly property bool isShown: caption.isBefore ? before.picture.isReady && (root.mode !== PictureView.After) : after.picture.isReady && root.mode !== PictureView.Before

            visible: caption.isShown && !root.isCropping && (root.mode !== PictureView.Blink || caption.isBefore === root.showsBefore)
            x: {
                if (!caption.isBefore && (root.mode === PictureView.Split || root.mode === PictureView.Sides))
                    return root.width - caption.width - Style.gap;
                return Style.gap;
            }
            y: Style.gap
            width: captionText.implicitWidth + 2 * Style.gap
            height: captionText.implicitHeight + 6
            radius: Style.radius
            color: "#b0000000"

            Text {
                id: captionText

                anchors.centerIn: parent
                text: !caption.isBefore && after.picture.isEncoded ? qsTr("After, as its file will hold it") : caption.modelData
                font.pixelSize: Style.smallTextSize
                color: "white"
            }
        }
    }

    Rectangle { // why there is no picture, or no export
        visible: root.trouble !== ""
        anchors.centerIn: parent
        width: Math.min(440, root.width - 2 * Style.margin)
        height: trouble.implicitHeight + 2 * Style.margin
        radius: Style.radius
        color: Style.window
        border.color: Style.failure

        TextEdit {
            id: trouble

            anchors.fill: parent
            anchors.margins: Style.margin
            text: root.trouble
            textFormat: TextEdit.PlainText
            wrapMode: TextEdit.Wrap
            readOnly: true
            selectByMouse: true
            font.pixelSize: Style.textSize
            color: Style.failure
            selectionColor: Style.accent
            selectedTextColor: Style.accentText
        }
    }

    Rectangle { // not at once: most pictures are there before anybody could read this
        visible: root.isBusy && busyTime.hasPassed && root.trouble === ""
        anchors.bottom: parent.bottom
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottomMargin: Style.margin
        width: busyText.implicitWidth + 2 * Style.margin
        height: busyText.implicitHeight + Style.gap
        radius: Style.radius
        color: Style.window

        Text {
            id: busyText

            anchors.centerIn: parent
            text: qsTr("Reading the photograph …")
            font.pixelSize: Style.textSize
            color: Style.text
        }
    }

    Timer {
        id: busyTime

        property bool hasPassed: false

        interval: 400
        running: root.isBusy
        onRunningChanged: {
            if (busyTime.running)
                busyTime.hasPassed = false;
        }
        onTriggered: busyTime.hasPassed = true
    }

    Rectangle { // where the keyboard is
        anchors.fill: parent
        visible: root.activeFocus && !grip.activeFocus
        color: "transparent"
        border.width: 2
        border.color: Style.accent
    }
}
