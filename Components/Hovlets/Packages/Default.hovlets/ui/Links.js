// SPDX-License-Identifier: Apache-2.0
.pragma library

// Numbers the links in marked-up text, since two may have the same target. The text comes from
// hovletReader, which writes them in one form.

var LINK = /<a href="([^"]*)">([\s\S]*?)<\/a>/g;
// The number of a link is a character for private use at the end of its target.
var FIRST_NUMBER = 0xe000;
var MOST_LINKS = 0x1800;
var CHARACTERS = { "lt": "<", "gt": ">", "quot": "\"", "nbsp": " ", "amp": "&" };

/// \a source with numbers in its targets.
function numbered(source) {
    var number = 0;
    return source.replace(LINK, function(link, target, label) {
        var mark = number < MOST_LINKS ? String.fromCharCode(FIRST_NUMBER + number++) : "";
        return "<a href=\"" + target + mark + "\">" + label + "</a>";
    });
}

/// The plain labels of the links in \a source.
function labels(source) {
    var found = [];
    source.replace(LINK, function(link, target, label) {
        if (found.length < MOST_LINKS)
            found.push(plain(label));
        return link;
    });
    return found;
}

function plain(label) {
    return label.replace(/<[^>]*>/g, "").replace(/&(lt|gt|quot|nbsp|amp);/g,
        function(entity, name) { return CHARACTERS[name]; });
}

/// The number of the link with a target from numbered(); -1 if there is none.
function numberOf(target) {
    var number = target ? target.charCodeAt(target.length - 1) - FIRST_NUMBER : -1;
    return number >= 0 && number < MOST_LINKS ? number : -1;
}

/// The target as the content has it.
function targetOf(target) {
    return numberOf(target) < 0 ? target : target.slice(0, -1);
}

/*
 * Where the link with \a number is in \a text, an item with linkAt(): its "target", and its parts
 * in the "lines" of the text, as rectangles. \a em is the size of the font, \a lineHeight the
 * distance of lines, both in pixels.
 */
function find(text, number, em, lineHeight) {
    var isLink = function(x, y) { return numberOf(text.linkAt(x, y)) === number; };
    var stepX = Math.max(2, Math.floor(em / 6));
    var stepY = Math.max(1, Math.floor(em / 2));
    var found = { target: "", lines: [] };
    var below = 0; // the last line found
    for (var y = Math.floor(stepY / 2); y < text.height; y += stepY) {
        var line = null;
        for (var x = 0; x < text.width; x += stepX) {
            if (!isLink(x, y))
                continue;
            if (!line) {
                found.target = targetOf(text.linkAt(x, y));
                line = lineAt(isLink, x, y, found.lines.length > 0 ? below : 0, lineHeight);
            }
            line = extended(line, isLink, x, y);
        }
        if (line) {
            found.lines.push(Qt.rect(line.left, line.top, line.right - line.left + 1,
                                     line.bottom - line.top + 1));
            below = line.bottom + 1;
            y = Math.max(y, below + Math.floor(stepY / 2) - stepY);
        } else if (found.lines.length > 0) {
            break;
        }
    }
    return found;
}

/// The lines of a text touch each other, so a link that is in several has no gaps.
function lineAt(isLink, x, y, highest, lineHeight) {
    var line = { left: x, right: x, top: y, bottom: y };
    while (line.top > highest && isLink(x, line.top - 1))
        --line.top;
    while (line.bottom - line.top + 1 < lineHeight && isLink(x, line.bottom + 1))
        ++line.bottom;
    return line;
}

/// With mixed directions, a link may have several parts in a line.
function extended(line, isLink, x, y) {
    line.right = Math.max(line.right, x);
    while (isLink(line.left - 1, y))
        --line.left;
    while (isLink(line.right + 1, y))
        ++line.right;
    return line;
}
