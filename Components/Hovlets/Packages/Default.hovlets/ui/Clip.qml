// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15
import QtQuick.Window 2.15
import com.zandor.hovlets.qml 1.0
import "Content.js" as Content

// The entry's clip. It shows the first frame, then plays once. A click pauses it, resumes it or
// plays it again; the bar below shows the position and can be dragged. The clip pauses while the
// popup is hidden. It has its natural size, or is scaled down to the available width. A clip that
// cannot be opened takes up no space.
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

    function toggle() {
        touched = true;
        wanted = !playing;
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
            if (clip.wanted && loadProgress === 1)
                clip.play();
        }
    }

    MouseArea {
        id: picture
        objectName: "clipPicture"
        x: Math.round((clip.width - width) / 2)
        y: clip.fitted ? Math.round((clip.space.height - height) / 2) : 0
        width: clip.shownWidth
        height: clip.shownHeight
        hoverEnabled: true
        onClicked: clip.toggle()

        Accessible.role: Accessible.Button
        Accessible.name: Content.translated(hovletView, clip.playing ? "Pause"
                                                        : clip.ended ? "Play again" : "Play")
        Accessible.onPressAction: clip.toggle()

        PlayMark {
            objectName: "playMark"
            anchors.centerIn: parent
            width: 2.6 * clip.theme.em
            visible: !clip.playing && (clip.touched || clip.ended)
        }
    }

    ProgressBar {
        id: bar
        objectName: "progressBar"
        theme: clip.theme
        x: picture.x
        y: picture.y + picture.height
        width: picture.width
        value: Math.min(1, video.progress)

        property bool goesOn: false

        onGrabbed: {
            goesOn = clip.playing;
            clip.touched = true;
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
