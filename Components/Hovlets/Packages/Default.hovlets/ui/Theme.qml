// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15
import "Colours.js" as Colours

// Colours, fonts and distances, all derived from the desktop's tooltip colours and the
// application's font.
QtObject {
    readonly property color base: Colours.opaque(hovletTheme.base)
    readonly property color text: Colours.opaque(hovletTheme.text)
    readonly property color secondary: Colours.paled(text, base, 0.4)
    readonly property color link: Colours.contrast(hovletTheme.link, base) >= Colours.READABLE
                                  ? Colours.opaque(hovletTheme.link) : text
    readonly property color border: Colours.blend(base, text, 0.3)
    readonly property color surface: Colours.surface(base, text, 0.07)
    readonly property color hoveredSurface: Colours.surface(base, text, 0.15)

    readonly property font bodyFont: hovletTheme.font
    readonly property font titleFont: variant(bodyFont, { weight: Font.Bold })
    readonly property font linkFont: variant(bodyFont, { underline: true })
    readonly property font keyFont: variant(bodyFont, { pointSize: bodyFont.pointSize * 0.9 })

    // In pixels, also for a font whose size is in points.
    readonly property int em: Math.max(1, bodyFont.pixelSize)
    readonly property int padding: Math.round(0.75 * em)
    readonly property int gap: Math.round(0.6 * em)
    readonly property int smallGap: Math.round(0.35 * em)
    readonly property int buttonSize: Math.round(1.7 * em)

    function variant(font, changes) {
        var result = {
            family: font.family,
            pointSize: font.pointSize,
            weight: font.weight,
            italic: font.italic,
            capitalization: font.capitalization,
            letterSpacing: font.letterSpacing
        };
        for (var name in changes)
            result[name] = changes[name];
        return Qt.font(result);
    }
}
