// SPDX-License-Identifier: Apache-2.0
.pragma library

// Splits shortcuts into the keys to press.

var MAC_SYMBOLS = { "Ctrl": "\u2318", "Alt": "\u2325", "Shift": "\u21e7", "Meta": "\u2303" };

// Longer words are descriptions, not keys.
var LONGEST_KEY = 12;
// So are more words than these.
var MOST_KEYS = 16;

function keysOf(chord, onMac) {
    // "Ctrl++" ends with the key "+".
    var keys = chord.split(/\+(?!$)/);
    if (keys.length === 1) {
        var symbols = /^[\u2303\u2325\u21e7\u2318]+(?=.)/.exec(chord);
        if (symbols)
            keys = symbols[0].split("").concat(chord.slice(symbols[0].length));
    }
    return keys.map(function(key) {
        var name = key.trim();
        return onMac && MAC_SYMBOLS.hasOwnProperty(name) ? MAC_SYMBOLS[name] : name;
    });
}

/*
 * The caps for a shortcut: a list of objects with the "text" of a key, and whether it "begins" a
 * further combination of a sequence. A text that is not a shortcut is one cap.
 */
function caps(shortcut, onMac) {
    if (!shortcut)
        return [];
    var caps = [];
    var chords = shortcut.split(/, (?=\S)/);
    for (var i = 0; i < chords.length; ++i) {
        var keys = keysOf(chords[i], onMac);
        for (var k = 0; k < keys.length; ++k) {
            if (!keys[k] || keys[k].length > LONGEST_KEY || caps.length === MOST_KEYS)
                return [{ text: shortcut, begins: false }];
            caps.push({ text: keys[k], begins: i > 0 && k === 0 });
        }
    }
    return caps;
}
