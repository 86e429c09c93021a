// SPDX-License-Identifier: Apache-2.0
.pragma library

// The lowest contrast at which text of normal size is easy to read.
var READABLE = 4.5;

// The lowest contrast at which marks and lines that carry a meaning are easy to see.
var VISIBLE = 3;

function channel(value) {
    return value <= 0.03928 ? value / 12.92 : Math.pow((value + 0.055) / 1.055, 2.4);
}

function luminance(colour) {
    return 0.2126 * channel(colour.r) + 0.7152 * channel(colour.g) + 0.0722 * channel(colour.b);
}

/// From 1 (equal brightness) to 21 (black on white).
function contrast(a, b) {
    var first = luminance(a);
    var second = luminance(b);
    return (Math.max(first, second) + 0.05) / (Math.min(first, second) + 0.05);
}

function opaque(colour) {
    return Qt.rgba(colour.r, colour.g, colour.b, 1);
}

/// Mixes two colours: \a from at a \a share of 0, \a to at 1.
function blend(from, to, share) {
    return Qt.rgba(from.r + (to.r - from.r) * share, from.g + (to.g - from.g) * share,
                   from.b + (to.b - from.b) * share, 1);
}

/// Fades \a text towards \a base by at most \a share, as long as its contrast to \a base is at least
/// \a least.
function paled(text, base, share, least) {
    for (var step = share; step > 0; step -= 0.05) {
        var colour = blend(text, base, step);
        if (contrast(colour, base) >= least)
            return colour;
    }
    return opaque(text);
}

/// A surface that differs from \a base by at most a \a share of \a tint, with \a text readable on it.
function surface(base, tint, share, text) {
    for (var step = share; step > 0; step -= 0.01) {
        var colour = blend(base, tint, step);
        if (contrast(text, colour) >= READABLE)
            return colour;
    }
    return opaque(base);
}

/// Moves \a colour towards \a text by as much as it takes to be readable on \a ground.
function readable(colour, text, ground) {
    for (var share = 0; share < 1; share += 0.1) {
        var mixed = blend(colour, text, share);
        if (contrast(mixed, ground) >= READABLE)
            return mixed;
    }
    return opaque(text);
}

/// Whether a background is the pale yellow that tooltips once had on every desktop.
function isPaleYellow(colour) {
    return Math.min(colour.r, colour.g) > 0.9 && Math.abs(colour.r - colour.g) < 0.06
        && Math.min(colour.r, colour.g) - colour.b > 0.05;
}

/// The first of \a colours that reaches a contrast of \a least to \a base; the last if none does.
function firstSeen(colours, base, least) {
    for (var i = 0; i < colours.length - 1; ++i) {
        if (contrast(colours[i], base) >= least)
            return opaque(colours[i]);
    }
    return opaque(colours[colours.length - 1]);
}
