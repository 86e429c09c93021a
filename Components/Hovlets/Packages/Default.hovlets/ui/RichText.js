// SPDX-License-Identifier: Apache-2.0
.pragma library

// Dresses texts that the reader passes as rich text, in the colours and distances of the theme.

function px(length) {
    return Math.round(length) + "px";
}

function style(theme, linkColor, mirrored) {
    var cell = px(theme.smallGap / 2);
    var column = px(2 * theme.gap);
    var indentation = px(2 * theme.em);
    return "<style>a { color: " + linkColor + "; text-decoration: underline; }"
        + " .edge { text-decoration: none; }"
        + " div, p, li { line-height: " + Math.round(100 * theme.lineHeight) + "%; }"
        + " code, kbd, samp, tt { font-family: \"" + theme.codeFont.family + "\"; }"
        + " table { border-collapse: collapse; }"
        + " th, td { padding: " + [cell, mirrored ? 0 : column, cell, mirrored ? column : 0].join(" ") + "; }"
        + " p { margin-top: 0px; margin-bottom: " + px(theme.smallGap) + "; }"
        + " ul, ol { margin-top: " + px(theme.smallGap) + "; margin-bottom: 0px; -qt-list-indent: 0;"
        // The marks of an item are where its own script begins.
        + " margin-left: " + indentation + "; margin-right: " + (mirrored ? indentation : 0) + "; }</style>";
}

function hasCode(text) {
    return /<(code|kbd|samp|tt)>/.test(text);
}

/// Gives code and keys within a line some room, for which rich text has no padding. InlineCode.js finds them
/// by it. Code without letters remains without a ground.
function padded(text) {
    var edge = "<span class=\"edge\">&nbsp;</span>";
    var result = "";
    var depth = 0;
    var from = 0; // of what is not in the result yet
    text.replace(/<(\/?)(?:code|kbd|samp|tt)>/g, function(tag, end, at) {
        if ((end ? --depth : depth++) > 0)
            return "";
        var to = end ? at + tag.length : at;
        var part = text.slice(from, to);
        result += end && !isBlank(part) ? edge + part + edge : part;
        from = to;
        return "";
    });
    return result + text.slice(from);
}

function isBlank(text) {
    return /^(?:<[^>]*>|&nbsp;|\s)*$/.test(text);
}

/// Aligns cells of any script with their column. Style sheets cannot: rich text mirrors their
/// alignment in cells of a script that is written from right to left.
function alignedCells(text, mirrored) {
    return text.replace(/<(t[hd])>/g, "<$1 align=\"" + (mirrored ? "right" : "left") + "\">");
}

/// Puts the first column to the right, which rich text does not do.
function mirroredTables(text) {
    return text.replace(/<table>/g, "<table align=\"right\">")
               .replace(/<tr>([^]*?)<\/tr>/g, function(row, cells) {
        var all = cells.match(/<(t[hd])>[^]*?<\/\1>/g);
        return all ? "<tr>" + all.reverse().join("") + "</tr>" : row;
    });
}

function dressed(text, theme, linkColor, mirrored) {
    return style(theme, linkColor, mirrored) + "<div>" + padded(alignedCells(mirrored ? mirroredTables(text) : text, mirrored))
        + "</div>";
}
