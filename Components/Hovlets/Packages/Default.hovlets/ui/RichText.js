// SPDX-License-Identifier: Apache-2.0
.pragma library

// Dresses texts that the reader passes as rich text, in the colours and distances of the theme.

var RIGHT_TO_LEFT = /[\u0590-\u065f\u066a-\u06ef\u06fa-\u08ff\ufb1d-\ufdcf\ufdf0-\ufdff\ufe70-\ufefc]/;
var LEFT_TO_RIGHT_MARK = "\u200e";

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
    var isMixed = RIGHT_TO_LEFT.test(text);
    var result = "";
    var depth = 0;
    var from = 0; // of what is not in the result yet
    text.replace(/<(\/?)(?:code|kbd|samp|tt)>/g, function(tag, end, at) {
        if ((end ? --depth : depth++) > 0)
            return "";
        var to = end ? at + tag.length : at;
        var part = text.slice(from, to);
        result += end && !isBlank(part) ? edge + (isMixed ? directed(part, result) : part) + edge : part;
        from = to;
        return "";
    });
    return result + text.slice(from);
}

/// \a code with marks at its ends, which keep punctuation at its place among letters from right to left. A mark
/// that comes \a before all letters would turn the text around.
function directed(code, before) {
    if (RIGHT_TO_LEFT.test(code) || !(hasLetters(code) || hasLetters(before)))
        return code;
    var from = code.indexOf(">") + 1;
    var to = code.lastIndexOf("<");
    return code.slice(0, from) + LEFT_TO_RIGHT_MARK + code.slice(from, to) + LEFT_TO_RIGHT_MARK + code.slice(to);
}

/// Whether the last block in \a text has letters so far.
function hasLetters(text) {
    var starts = ["<p>", "<li>", "<td", "<th"].map(function(tag) { return text.lastIndexOf(tag); });
    var letters = text.slice(Math.max(0, Math.max.apply(null, starts))).replace(/<[^>]*>|&\w+;/g, "");
    return RIGHT_TO_LEFT.test(letters) || /[A-Za-z]/.test(letters);
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
