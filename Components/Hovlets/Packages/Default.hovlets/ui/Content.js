// SPDX-License-Identifier: Apache-2.0
.pragma library

// Determines what the user interfaces show of an entry. HovletsUI.qml describes the format.

/*
 * The content of \a entry to show; all of it is empty for null:
 *   title, shortcut, key   plain text
 *   blocks                 in order, each an object with a "kind":
 *       paragraph          text, format ("plain", "styled" or "rich"), muted
 *       heading, note,     as a paragraph
 *       warning
 *       code               text
 *       link, button       text, locator
 *       image              source (path), density, darkSource and darkDensity (for a dark
 *                          background; the source may be empty), text (its description), caption
 *       clip               name (in the package's resources), density, captions (each with begin
 *                          and end in seconds, and text)
 * The reader passes only markup that is harmless and quick to lay out. "spoken" is the plain text of
 * a block.
 */
function read(entry, reader, view) {
    return reader.read(entry, view ? view.documentationAvailable : false);
}

/// Translates a text of the user interface itself.
function translated(view, text) {
    return view ? view.translate(text, "HovletsUI") || text : text;
}

/// Whether the host has set the global property for users who want no motion. Unset, it reads as its
/// placeholder.
function motionIsReduced(view) {
    var value = view ? view.interpolate("%(reducedMotion)s") : "";
    return value === "true" || value === "1";
}

/// A list with the first paragraph among \a blocks, which may be a list or a table; empty if there is none.
function firstParagraph(blocks) {
    return blocks.filter(function(block) { return block.kind === "paragraph"; }).slice(0, 1);
}

/// The description of \a content for screen readers, without the title, when \a blocks are shown
/// between \a reason and \a hint.
function spokenContent(content, reason, blocks, hint) {
    var texts = [content.shortcut, reason]
        .concat(blocks.map(function(block) { return block.spoken; }), [hint]);
    return texts.filter(function(text) { return text; }).join("\n");
}
