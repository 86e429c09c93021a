// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15
import QtQuick.Window 2.15
import com.zandor.hovlets.qml 1.0
import "Content.js" as Content

// The entry's clip. It plays once, or again and again if the entry has the attribute "loop". A click
// pauses it, resumes it or plays it again; the bar below shows the position and can be dragged. The
// arrow keys step through its frames. The clip pauses while the popup is hidden. It has its natural
// size, or is scaled down to the available width. A clip that cannot be opened takes up no space.
Item {
    id: clip

    required property Theme theme
    property string name
    readonly property real naturalWidth: !loaded ? 0 : fitted ? space.width : video.contentWidth

    // The window's view resolves the name, so it must exist first.
    readonly property string availableName: Window.window ? name : ""
    property bool loaded: false
    // The popup has its final size before its first frame. If the clip's size is still unknown by
    // then, the clip is fitted into this space.
    property bool fitted: false
    readonly property size space: Qt.size(200, 150)
    // The host sets the property for users who want no motion. Unset, it reads as its placeholder.
    readonly property bool still: {
        var value = hovletView ? hovletView.interpolate("%(reducedMotion)s") : "";
        return value === "true" || value === "1";
    }
    readonly property bool loops: hovlet ? hovlet.attribute("loop") === "true" : false
    // Whether the clip shows its result for users who want no motion, until they click.
    property bool waits: still
    // Whether the clip should play, by default or by the user's last choice.
    property bool wanted: !still
    // Whether the user has clicked the clip, or has to in order to play it.
    property bool touched: still
    readonly property bool shown: Window.visibility !== Window.Hidden
    // Starts when the popup is visible.
    property bool playsWhenShown: false
    // QML can access only enumerators that start with a capital letter.
    readonly property int playingState: 2
    readonly property bool playing: video.state === playingState
    readonly property bool ended: video.progress >= 1
    readonly property real factor: {
        if (!loaded)
            return 1;
        var scale = Math.min(1, width / video.contentWidth);
        return fitted ? Math.min(scale, space.width / video.contentWidth,
                                 space.height / video.contentHeight) : scale;
    }
    readonly property int shownWidth: Math.round(video.contentWidth * factor)
    readonly property int shownHeight: Math.round(video.contentHeight * factor)

    implicitHeight: !loaded ? 0 : (fitted ? space.height : picture.height) + bar.height
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
        touched = true;
        waits = false;
        wanted = false;
        video.pause();
        video.position = Math.max(0, video.position + frames);
    }

    function toggle() {
        touched = true;
        wanted = !playing;
        if (waits)
            video.rewindToStart();
        waits = false;
        if (wanted)
            video.play();
        else
            video.pause();
    }

    Connections {
        target: hovletReader
        function onClipFailed(failed) {
            if (failed === video)
                clip.loaded = false;
        }
    }

    HVVideoComponent {
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
        Accessible.name: Content.translated(hovletView, clip.playing ? "Pause"
                                                        : clip.ended ? "Play again" : "Play")
        Accessible.onPressAction: clip.toggle()

        // At the edge, where it covers little. Nothing covers the result of a clip unless the mouse is
        // over it.
        PlayMark {
            objectName: "playMark"
            anchors { left: parent.left; bottom: parent.bottom; margins: clip.theme.unit }
            width: 2 * clip.theme.em
            visible: !clip.playing && (clip.ended || clip.waits ? picture.containsMouse : clip.touched)
        }
    }

    // Sets the clip off from a background of the same colour.
    Rectangle {
        // Outside: a scaled frame may cover its last row only in part.
        anchors { fill: picture; margins: -1 }
        color: "transparent"
        border.color: clip.theme.border
        z: -1
    }

    Keys.onLeftPressed: step(-1)
    Keys.onRightPressed: step(1)
    Keys.onSpacePressed: toggle()
    activeFocusOnTab: true

    ProgressBar {
        id: bar
        objectName: "progressBar"
        theme: clip.theme
        x: picture.x
        y: picture.y + picture.height
        width: picture.width
        value: clip.waits ? 0 : Math.min(1, video.progress)

        property bool goesOn: false

        onGrabbed: {
            goesOn = clip.playing;
            clip.touched = true;
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
