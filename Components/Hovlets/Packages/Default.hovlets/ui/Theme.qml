// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15
import "Colours.js" as Colours

// Colours, fonts and distances, all derived from the desktop's tooltip colours and the
// application's font.
QtObject {
    id: theme

    // Pale yellow is the default of many desktops rather than a choice. There, the popup has the
    // colours of the application's lists and text fields, unless the host wants the exact ones.
    readonly property bool neutral: !hovletTheme.exact && Colours.isPaleYellow(hovletTheme.base)
        && Colours.contrast(hovletTheme.windowText, hovletTheme.windowBase) >= Colours.READABLE
    readonly property bool dark: Colours.luminance(base) < 0.2

    readonly property color base: Colours.opaque(neutral ? hovletTheme.windowBase : hovletTheme.base)
    readonly property color text: Colours.opaque(neutral ? hovletTheme.windowText : hovletTheme.text)
    // Black on white is harsh for more than a title.
    readonly property color bodyText: neutral ? Colours.paled(text, base, 0.12, 7) : text
    readonly property color secondary: Colours.paled(text, base, 0.4, Colours.READABLE)
    // For handles and other marks without a colour of their own.
    readonly property color mark: Colours.paled(text, base, 0.6, Colours.VISIBLE)
    // Pure blue is the palette's default, like the yellow.
    readonly property color plainLink: neutral && Qt.colorEqual(hovletTheme.link, "#0000ff")
                                       ? (dark ? "#6cb4ff" : "#0a5fbf") : hovletTheme.link
    readonly property color link: Colours.firstSeen([plainLink, text], base, Colours.READABLE)
    // On a surface, which has less contrast than the background.
    readonly property color accent: Colours.firstSeen([hovletTheme.accent, link, text],
                                                      hoveredSurface, Colours.VISIBLE)
    readonly property color border: Colours.blend(base, text, dark ? 0.28 : 0.22)
    readonly property color surface: Colours.surface(base, text, 0.07, text)
    readonly property color hoveredSurface: Colours.surface(base, text, 0.12, text)
    // Surfaces of notes and warnings, and the marks on them.
    readonly property color noteSurface: Colours.surface(base, link, dark ? 0.14 : 0.09, text)
    readonly property color noteMark: Colours.firstSeen([link, text], noteSurface, Colours.VISIBLE)
    readonly property color warningSurface: Colours.surface(base, yellow, dark ? 0.12 : 0.16, text)
    readonly property color warningMark: Colours.firstSeen([amber, text], warningSurface, Colours.VISIBLE)
    readonly property color yellow: "#ffae00"
    readonly property color amber: dark ? "#f0b23c" : "#b86a00"

    // Three sizes: the body's, a larger one for titles and a smaller one for keys.
    readonly property font bodyFont: hovletTheme.font
    property font titleFont
    property font headingFont
    property font codeFont
    property font linkFont
    property font keyFont

    // In pixels, even if the font's size is in points.
    property int em: 1
    // How much lines are higher than the font needs.
    property real lineHeight: 1
    // What the last line leaves free below.
    property int leading: 0
    // Distances are multiples of this one, or of its half.
    readonly property int unit: Math.max(1, Math.round(em / 3))
    readonly property int padding: 3 * unit
    readonly property int gap: 2 * unit
    readonly property int smallGap: unit
    // Even, like the sizes of icons, so that both have the same centre.
    readonly property int buttonSize: 2 * Math.round(0.9 * em)
    // At most the padding, so that no text is in a corner.
    readonly property int cornerRadius: 2 * unit
    // Corners of what is inside the popup.
    readonly property int innerRadius: Math.round(0.3 * em)
    // Corners of what is inside a line.
    readonly property int smallRadius: Math.round(0.22 * em)

    // Has a size once it has text.
    readonly property Text ruler: Text {
        text: "M"
    }

    // Measures before the ruler does, which has no height until it is complete.
    readonly property FontMetrics metrics: FontMetrics {}
    property bool derived: false

    onBodyFontChanged: derive()
    Component.onCompleted: {
        if (derived)
            measure();
        else
            derive();
    }

    // Assigns the same again when the ruler is complete. Another value would lay out every text twice.
    function measure() {
        // Assigned here: a binding would not work, because the font has no change signal.
        ruler.font = bodyFont;
        metrics.font = bodyFont;
        em = Math.max(1, ruler.fontInfo.pixelSize);
        var height = Math.max(1, ruler.implicitHeight || Math.ceil(metrics.height));
        lineHeight = Math.max(1, 1.4 * em / height);
        leading = Math.max(0, Math.floor((lineHeight - 1) * height));
    }

    function derive() {
        derived = true;
        measure();
        titleFont = sized(1.15);
        titleFont.weight = Font.DemiBold;
        keyFont = sized(0.85);
        // Modified copies keep the exact size, and properties that QML does not know.
        headingFont = bodyFont;
        headingFont.weight = Font.DemiBold;
        codeFont = bodyFont;
        codeFont.family = hovletTheme.fixedFont.family;
        linkFont = bodyFont;
        linkFont.underline = true;
    }

    function sized(factor) {
        return Qt.font({
            family: bodyFont.family,
            pixelSize: Math.max(1, Math.round(factor * em)),
            weight: bodyFont.weight,
            italic: bodyFont.italic
        });
    }
}
