// SPDX-License-Identifier: Apache-2.0
.pragma library

// What the user interfaces show of an entry. The format is described in HovletsUI.qml.

/*
 * What there is to show of \a entry, all of it empty for null:
 *   title, shortcut, key   plain text
 *   blocks                 in order, each an object with a "kind":
 *       paragraph          text, format ("plain", "styled" or "rich"), muted
 *       link               text, locator
 *       image              source (path), text (its description)
 *       clip               name (in the package's resources)
 * All texts have passed the reader, which lets no markup through but what is harmless and quick to
 * lay out. Each block has its plain words in "spoken".
 */
function read(entry, reader, view) {
    return reader.read(entry, view ? view.documentationAvailable : false);
}

/// A text of the user interface's own, in the reader's language.
function translated(view, text) {
    return view ? view.translate(text, "HovletsUI") || text : text;
}

/// The first paragraph among \a blocks, in a list, or an empty list.
function firstParagraph(blocks) {
    return blocks.filter(function(block) { return block.kind === "paragraph"; }).slice(0, 1);
}

/// What \a content says beside its title when it shows \a blocks of it.
function spokenContent(content, blocks) {
    var texts = [content.shortcut].concat(blocks.map(function(block) { return block.spoken; }));
    return texts.filter(function(text) { return text; }).join("\n");
}
