// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15
import QtQuick.Window 2.15
import com.zandor.hovlets.qml 1.0
import "Content.js" as Content

// The entry's clip. It plays once, or again and again if the entry has the attribute "loop". A click
// pauses it, resumes it or plays it again. While the mouse is over it or it has the focus, it shows the
// position and the time, in a bar that can be dragged. The arrow keys step through its frames. The clip
// pauses while the popup is hidden. It has its natural size, or is scaled down to the available width.
// A clip that cannot be opened takes up no space.
Item {
    id: clip

    required property Theme theme
    // The content to show; see Content.js.
    required property var content
    readonly property real naturalWidth: !loaded ? 0 : fitted ? space.width : fullWidth
    // Pixels of the clip for each unit of length.
    readonly property real fullWidth: video.contentWidth / content.density

    // The window's view resolves the name, so it must exist first.
    readonly property string availableName: Window.window ? content.name : ""
    property bool loaded: false
    // The popup has its final size before its first frame. If the clip's size is still unknown by
    // then, the clip is fitted into this space.
    property bool fitted: false
    readonly property size space: Qt.size(200, 150)
    readonly property bool still: Content.motionIsReduced(hovletView)
    readonly property bool loops: hovlet ? hovlet.attribute("loop") === "true" : false
    // Whether the clip shows its result for users who want no motion, until they click.
    property bool waits: still
    // Whether the clip should play, by default or by the user's last choice.
    property bool wanted: !still
    readonly property bool shown: Window.visibility !== Window.Hidden
    // Starts when the popup is visible.
    property bool playsWhenShown: false
    // QML can access only enumerators that start with a capital letter.
    readonly property int playingState: 2
    readonly property bool playing: video.state === playingState
    readonly property alias ended: video.ended
    readonly property bool inUse: picture.containsMouse || activeFocus || controls.pressed
    // The size of a pixel.
    readonly property real factor: {
        if (!loaded)
            return 1;
        var scale = Math.min(1 / content.density, width / video.contentWidth);
        return fitted ? Math.min(scale, space.width / video.contentWidth,
                                 space.height / video.contentHeight) : scale;
    }
    readonly property int shownWidth: Math.round(video.contentWidth * factor)
    readonly property int shownHeight: Math.round(video.contentHeight * factor)

    implicitHeight: !loaded ? 0 : (fitted ? space.height : picture.height)
    visible: loaded

    onAvailableNameChanged: {
        video.source = availableName;
        var size = availableName ? hovletReader.awaitClipSize(video) : "none";
        fitted = size === "pending";
        loaded = size !== "none";
    }
    // The position and the state become known one after the other.
    onEndedChanged: Qt.callLater(repeat)
    onShownChanged: {
        if (shown && playsWhenShown) {
            play();
        } else if (!shown && playing) {
            playsWhenShown = true;
            video.pause();
        }
    }

    function play() {
        playsWhenShown = !shown;
        if (shown)
            video.play();
    }

    function repeat() {
        if (loops && wanted && ended && !playing)
            play();
    }

    // The last frame shows what the clip is about; many clips begin with an empty picture.
    function showResult() {
        video.scrubbing = true;
        video.progress = 0.9999;
        video.scrubbing = false;
    }

    function step(frames) {
        if (frames > 0 && ended)
            return;
        waits = false;
        wanted = false;
        video.pause();
        video.position = Math.max(0, video.position + frames);
    }

    function toggle() {
        wanted = !playing;
        if (waits)
            video.rewindToStart();
        waits = false;
        if (wanted)
            video.play();
        else
            video.pause();
    }

    function captionAt(time) {
        var captions = content.captions;
        for (var i = 0; i < captions.length; ++i) {
            if (captions[i].begin <= time && time < captions[i].end)
                return captions[i].text;
        }
        return "";
    }

    Connections {
        target: hovletReader
        function onClipFailed(failed) {
            if (failed === video)
                clip.loaded = false;
        }
    }

    HVClip {
        id: video
        objectName: "video"
        x: picture.x
        y: picture.y
        width: contentWidth
        height: contentHeight
        transformOrigin: Item.TopLeft
        scale: clip.factor
        // The controller does not wait for the decoder, and pauses when all frames are decoded.
        // Therefore the clip starts when loading is complete.
        onLoadProgressChanged: {
            if (loadProgress !== 1)
                return;
            if (clip.wanted)
                clip.play();
            else if (clip.waits)
                clip.showResult();
        }
        onStateChanged: Qt.callLater(clip.repeat)
    }

    MouseArea {
        id: picture
        objectName: "clipPicture"
        x: Math.round((clip.width - width) / 2)
        y: clip.fitted ? Math.round((clip.space.height - height) / 2) : 0
        width: clip.shownWidth
        height: clip.shownHeight
        hoverEnabled: true
        onClicked: {
            clip.forceActiveFocus();
            clip.toggle();
        }

        Accessible.role: Accessible.Button
        Accessible.focusable: true
        Accessible.focused: clip.activeFocus
        Accessible.name: Content.translated(hovletView, clip.playing ? "Pause"
                                                        : clip.ended ? "Play again" : "Play")
        Accessible.onPressAction: clip.toggle()

        ClipCaption {
            theme: clip.theme
            text: clip.content.captions.length > 0 ? clip.captionAt(video.time) : ""
            maximumWidth: picture.width - 2 * theme.unit
            x: Math.round((picture.width - width) / 2)
            y: (controls.visible ? controls.y : picture.height) - height - theme.unit
        }

        ClipControls {
            id: controls
            objectName: "clipControls"
            theme: clip.theme
            visible: clip.inUse
            x: theme.unit
            y: picture.height - height - theme.unit
            width: picture.width - 2 * theme.unit
            height: implicitHeight
            playing: clip.playing
            // Nothing changes while nobody sees it.
            value: !visible || clip.waits ? 0 : Math.min(1, video.progress)
            time: !visible || clip.waits ? 0 : video.time
            duration: video.duration

            property bool goesOn: false

            onGrabbed: {
                goesOn = clip.playing;
                clip.waits = false;
                clip.wanted = false;
                video.scrubbing = true;
                video.pause();
            }
            // Just before the end, where there is still a frame.
            onDragged: function(value) { video.progress = Math.min(value, 0.9999); }
            onReleased: {
                video.scrubbing = false;
                clip.wanted = goesOn;
                if (goesOn)
                    clip.play();
            }
        }
    }

    // Sets the clip off from a background of the same colour.
    Rectangle {
        objectName: "clipFrame"
        readonly property int thickness: clip.activeFocus ? 2 : 1
        // Outside: a scaled frame may cover its last row only in part.
        anchors { fill: picture; margins: -thickness }
        // Until the first frame is decoded, this is all there is.
        color: video.hasFrame ? "transparent" : clip.theme.surface
        border { width: thickness; color: clip.activeFocus ? clip.theme.accent : clip.theme.border }
        z: -1
    }

    Keys.onLeftPressed: step(-1)
    Keys.onRightPressed: step(1)
    Keys.onSpacePressed: toggle()
    activeFocusOnTab: true
}
