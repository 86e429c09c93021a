// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15
import "Content.js" as Content

// The simple popup: title, shortcut and the first paragraph. HovletsUI.qml describes the format.
PopupFrame {
    content: Content.read(hovlet, hovletReader, hovletView)
    blocks: Content.firstParagraph(content.blocks)
}
