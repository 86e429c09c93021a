// SPDX-License-Identifier: Apache-2.0
.pragma library
.import "RichText.js" as RichText

// Finds code within texts. RichText.js puts an edge on either side of it, which is a no-break space.

var NO_BREAK_SPACE = "\u00a0";
var PIECE = /<span class="edge">[^<]*|<[^>]*>|&nbsp;|\u00a0/g;
var END_OF_BLOCK = /[\u2029\ufdd0\ufdd1]/; // of a paragraph or a cell
var BLANK = /[\u2028\u2029\ufdd0\ufdd1\u200e ]/;
var DIGIT = /[0-9\u0660-\u0669\u06f0-\u06f9]/;
var NEUTRAL = /[\u0000-\u0040\u005b-\u0060\u007b-\u00bf\u2000-\u2bff\u3000-\u3020]/;

// The editor takes longer for each position the more lines there are. Code that wraps more often than this has
// no ground at its end.
var MOST_WRAPS = 100;

/*
 * Rectangles for the code in each line of \a edit, a text editor that shows \a markup. Where code wraps, its
 * ground extends beyond the letters by half of \a edge, the width of a no-break space.
 */
function find(edit, markup, edge) {
    var text = edit.getText(0, edit.length);
    var directions = RichText.RIGHT_TO_LEFT.test(text) ? directionsIn(text) : null;
    var found = [];
    var wraps = 0;
    ranges(markup, text).forEach(function(range) {
        var length = range.to - range.from;
        for (var from = range.from; from < range.to && wraps < MOST_WRAPS;) {
            var line = new Line(edit, text, from, edge);
            var to = line.endOf(range.to, length);
            length = to - from;
            var before = from === range.from ? 0 : edge / 2;
            var after = to === range.to ? 0 : edge / 2;
            spansIn(line, from, to, directions).forEach(function(span) {
                var left = Math.max(0, Math.round(span.left - before));
                var right = Math.min(Math.floor(edit.width), Math.round(span.right + after));
                found.push(Qt.rect(left, Math.round(line.y), right - left, Math.round(line.height)));
            });
            if (to < range.to)
                ++wraps;
            from = to;
        }
    });
    return found;
}

/// Where code begins and ends in \a text, the plain text of \a markup, edges included.
function ranges(markup, text) {
    var positions = [];
    var at = -1;
    var isComplete = true;
    // The text may have other no-break spaces.
    markup.replace(PIECE, function(piece) {
        var isEdge = piece.lastIndexOf("<span class=\"edge\">", 0) === 0;
        if (piece.charAt(0) === "<" && !isEdge)
            return "";
        at = text.indexOf(NO_BREAK_SPACE, at + 1);
        isComplete = isComplete && at >= 0;
        if (isEdge)
            positions.push(at);
        return "";
    });
    var found = [];
    for (var i = 0; isComplete && i + 1 < positions.length; i += 2)
        found.push({ from: positions[i], to: positions[i + 1] + 1 });
    return found;
}

/// The line in which the character at \a position is.
function Line(edit, text, position, edge) {
    var place = edit.positionToRectangle(position);
    this.y = place.y;
    this.height = place.height;
    this.text = text;

    this.x = function(at) {
        return edit.positionToRectangle(at).x;
    };
    this.contains = function(at) {
        return at >= 0 && at <= text.length && edit.positionToRectangle(at).y === place.y;
    };
    /// Where the line ends, or \a limit if that is before. It probably has \a length more characters.
    this.endOf = function(limit, length) {
        var inside = position;
        var outside = limit;
        for (var step = 1, next = position + length; ; step *= 2) {
            next = Math.min(next, outside - 1);
            if (next <= inside)
                break;
            var isInside = this.contains(next);
            if (isInside)
                inside = next;
            else
                outside = next;
            next += isInside ? step : -step;
            if (next <= inside || next >= outside)
                next = Math.floor((inside + outside) / 2);
        }
        return inside + 1;
    };
    /// The width of the character at \a at. Letters of code are as wide as their \a neighbour, if there is one.
    this.widthOf = function(at, neighbour) {
        if (text.charAt(at) === NO_BREAK_SPACE)
            return edge;
        if (BLANK.test(text.charAt(at)))
            return 0;
        return neighbour < 0 ? 2 * edge : Math.abs(this.x(at) - this.x(neighbour));
    };
}

/*
 * The direction of each character: 1 from left to right, -1 from right to left, and 0 for that of the
 * paragraph. Punctuation and spaces have a direction if it is that of the letters on either side.
 */
function directionsIn(text) {
    var directions = [];
    var last = 0; // the direction of the last letter
    var settled = 0; // what comes before has its direction
    for (var i = 0; i < text.length; ++i) {
        var character = text.charAt(i);
        var direction = RichText.RIGHT_TO_LEFT.test(character) ? -1 : DIGIT.test(character) ? last
                      : NEUTRAL.test(character) && character !== RichText.LEFT_TO_RIGHT_MARK ? 0 : 1;
        directions.push(direction);
        if (END_OF_BLOCK.test(character)) {
            directions[i] = last = 0;
            settled = i + 1;
        } else if (direction !== 0) {
            for (; settled < i; ++settled)
                directions[settled] = direction === last ? direction : 0;
            last = direction;
            settled = i + 1;
        }
    }
    return directions;
}

/*
 * The code between \a from and \a to in \a line, from left to right. With mixed directions, there may be
 * several spans.
 *
 * The editor says where characters begin. The first one of a run against the direction of the paragraph is an
 * exception: there, it says where the character before the run ends. That is where the run itself ends.
 */
function spansIn(line, from, to, directions) {
    if (!directions)
        return merged([[line.x(from), endOfRun(line, from, to, 1)]]);
    var first = from;
    while (line.contains(first - 1) && !END_OF_BLOCK.test(line.text.charAt(first - 1)))
        --first;
    var rest = line.text.slice(from).search(END_OF_BLOCK);
    var last = line.endOf(rest < 0 ? line.text.length + 1 : from + rest + 1, to - from) - 1;
    var base = line.x(last) < line.x(first) ? -1 : 1;
    var isAgainst = function(position) { return directions[position] === -base; };
    var spans = [];
    while (from < to) {
        var end = from + 1;
        while (end < to && isAgainst(end) === isAgainst(from))
            ++end;
        if (isAgainst(from)) {
            var run = { from: from, to: end };
            while (run.from > first && isAgainst(run.from - 1))
                --run.from;
            while (run.to <= last && isAgainst(run.to))
                ++run.to;
            spans.push(spanAgainst(line, from, end, run, base, run.from === first));
        } else {
            spans.push([line.x(from), endOfRun(line, from, end, base)]);
        }
        from = end;
    }
    return merged(spans);
}

/// The x where the characters between \a from and \a to end, which are in one direction.
function endOfRun(line, from, to, direction) {
    if (line.contains(to))
        return line.x(to);
    return line.x(to - 1) + direction * line.widthOf(to - 1, to - 2 < from ? -1 : to - 2);
}

/// The same for both ends of characters within \a run, which is against the direction \a base.
function spanAgainst(line, from, to, run, base, isFirst) {
    var begin = line.x(from);
    if (from === run.from && !isFirst) {
        begin = line.contains(run.to) ? line.x(run.to)
              : line.text.charAt(from) === RichText.LEFT_TO_RIGHT_MARK ? line.x(from + 1)
              : line.x(from + 1) + base * line.widthOf(from + 1, from + 2 < run.to ? from + 2 : -1);
    }
    if (to < run.to)
        return [begin, line.x(to)];
    if (!isFirst)
        return [begin, line.x(run.from)];
    return [begin, line.x(to - 1) - base * line.widthOf(to - 1, to - 2 < from ? -1 : to - 2)];
}

/// Spans without their gaps of up to a pixel, which come from rounding.
function merged(spans) {
    var result = [];
    spans.map(function(span) {
        return { left: Math.min(span[0], span[1]), right: Math.max(span[0], span[1]) };
    }).filter(function(span) {
        return span.right > span.left;
    }).sort(function(a, b) {
        return a.left - b.left;
    }).forEach(function(span) {
        var last = result[result.length - 1];
        if (last && span.left <= last.right + 1)
            last.right = Math.max(last.right, span.right);
        else
            result.push(span);
    });
    return result;
}
