// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15
import QtQuick.Window 2.15
import com.zandor.hovlets.qml 1.0
import "Content.js" as Content

// The entry's clip: its first picture, then it plays once. A click pauses it, plays on, or plays it
// again; the bar below tells where it is and can be dragged. While the popup is hidden it pauses. It
// has the size of the clip, or is scaled down to the width that there is. A clip that cannot be
// opened takes no room.
Item {
    id: clip

    required property Theme theme
    property string name
    readonly property real naturalWidth: loaded ? video.contentWidth : 0

    property bool loaded: false
    // For those who cannot bear motion: the host's word for it. Unset, it is the placeholder itself.
    readonly property bool still: {
        var value = hovletView ? hovletView.interpolate("%(reducedMotion)s") : "";
        return value === "true" || value === "1";
    }
    // Whether it is to play, by itself or because the user said so last.
    property bool wanted: !still
    // The user has taken over, or has to.
    property bool touched: still
    readonly property bool shown: Window.visibility !== Window.Hidden
    // As soon as there is somebody to see it.
    property bool playsWhenShown: false
    // QML knows enumerators with a capital letter only.
    readonly property int playingState: 2
    readonly property bool playing: video.state === playingState
    readonly property bool ended: video.progress >= 1
    readonly property real factor: loaded ? Math.min(1, width / video.contentWidth) : 1
    readonly property int shownWidth: Math.round(video.contentWidth * factor)
    readonly property int shownHeight: Math.round(video.contentHeight * factor)

    implicitHeight: loaded ? bar.y + bar.height : 0
    visible: loaded

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

    HVVideoComponent {
        id: video
        objectName: "video"
        x: picture.x
        width: contentWidth
        height: contentHeight
        transformOrigin: Item.TopLeft
        scale: clip.factor
        // Clips are looked up through the window's view.
        source: Window.window ? clip.name : ""
        onContentWidthChanged: clip.loaded = true
        // Playing does not wait for the decoder, and pauses when all is decoded: that is told here.
        onLoadProgressChanged: {
            if (clip.wanted && loadProgress === 1)
                clip.play();
        }
    }

    MouseArea {
        id: picture
        objectName: "clipPicture"
        x: Math.round((clip.width - width) / 2)
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
        y: picture.height
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
        // Just short of the end, where there is still a picture.
        onDragged: function(value) { video.progress = Math.min(value, 0.9999); }
        onReleased: {
            video.scrubbing = false;
            clip.wanted = goesOn;
            if (goesOn)
                clip.play();
        }
    }
}
