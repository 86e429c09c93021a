// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15
import "Colours.js" as Colours

// Colours, fonts and distances, all derived from the desktop's tooltip colours and the
// application's font.
QtObject {
    id: theme

    readonly property color base: Colours.opaque(hovletTheme.base)
    readonly property color text: Colours.opaque(hovletTheme.text)
    readonly property color secondary: Colours.paled(text, base, 0.4)
    readonly property color link: Colours.contrast(hovletTheme.link, base) >= Colours.READABLE
                                  ? Colours.opaque(hovletTheme.link) : text
    readonly property color border: Colours.blend(base, text, 0.3)
    readonly property color surface: Colours.surface(base, text, 0.07)
    readonly property color hoveredSurface: Colours.surface(base, text, 0.15)

    readonly property font bodyFont: hovletTheme.font
    property font titleFont
    property font headingFont
    property font codeFont
    property font linkFont
    property font keyFont

    // In pixels, even if the font's size is in points.
    property int em: 1
    readonly property int padding: Math.round(0.75 * em)
    readonly property int gap: Math.round(0.6 * em)
    readonly property int smallGap: Math.round(0.35 * em)
    readonly property int buttonSize: Math.round(1.7 * em)

    // Has a size once it has text.
    readonly property Text ruler: Text {
        text: "M"
    }

    onBodyFontChanged: derive()
    Component.onCompleted: derive()

    function derive() {
        // Assigned here: a binding would not work, because the font has no change signal.
        ruler.font = bodyFont;
        em = Math.max(1, ruler.fontInfo.pixelSize);

        // Modified copies keep the exact size, and properties that QML does not know.
        titleFont = bodyFont;
        titleFont.weight = Font.Bold;
        headingFont = bodyFont;
        headingFont.weight = Font.DemiBold;
        codeFont = bodyFont;
        codeFont.family = "monospace";
        linkFont = bodyFont;
        linkFont.underline = true;
        keyFont = Qt.font({
            family: bodyFont.family,
            pixelSize: Math.max(1, Math.round(0.9 * em)),
            weight: bodyFont.weight,
            italic: bodyFont.italic
        });
    }
}
