// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15
import "Content.js" as Content

// The simple popup: title, shortcut and the first paragraph, and the key that shows the rest.
// HovletsUI.qml describes the format.
PopupFrame {
    // Whether the full popup has more. The library leaves the key to the host if not.
    readonly property bool hasMore: content.blocks.length > blocks.length

    content: Content.read(hovlet, hovletReader, hovletView)
    blocks: Content.firstParagraph(content.blocks)
    hintKey: hasMore && !(hovletView && hovletView.reserved) ? hovletWindow.levelKey : ""
}
