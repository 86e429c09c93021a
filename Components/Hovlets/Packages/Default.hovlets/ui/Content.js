// SPDX-License-Identifier: Apache-2.0
.pragma library

// Turns an entry into what the user interfaces show. The format is described in HovletsUI.qml.

var RICH_TAGS = "a|b|big|br|code|em|font|i|kbd|li|ol|p|s|samp|small|span|strong|sub|sup|tt|u|ul";
var TAG_END = "(?:\\s[^<>]*)?/?>";
// Those of them that mark words rather than blocks.
var WORD_ELEMENT = /^(?:a|b|big|code|em|font|i|kbd|s|samp|small|span|strong|sub|sup|tt|u)$/;
var MARKUP = new RegExp("</?(?:" + RICH_TAGS + ")" + TAG_END
                        + "|&(?:lt|gt|amp|quot|apos|nbsp|#[0-9]+|#x[0-9a-f]+);", "i");
// What Qt's light-weight formatting shows as the full one does.
var SIMPLE_MARKUP = new RegExp("</?(?:b|strong|i|em|u)>|<br ?/?>|</a>|<a href=(?:\"[^\"&]*\"|'[^'&]*')>"
                               + "|&(?:lt|gt|amp|quot|nbsp);", "gi");
var STRAY_BRACKET = new RegExp("<(?!/?(?:" + RICH_TAGS + ")" + TAG_END + ")", "gi");
var ENTITIES = { lt: "<", gt: ">", amp: "&", quot: "\"", apos: "'", nbsp: "\u00a0" };
var PLACEHOLDER = /%\([-_a-zA-Z0-9]+\)s/g;
var LINK = /<a\s[^<>]*href\s*=\s*(?:"([^"]*)"|'([^']*)')[^<>]*>([\s\S]*?)<\/a\s*>/gi;

/*
 * What there is to show of \a entry, all of it empty for null:
 *   title, shortcut, key   plain text
 *   blocks                 in order, each an object with a "kind":
 *       paragraph          text, format ("plain", "styled" or "rich"), muted
 *       link               text, locator
 *       image              source (URL), text (its description)
 *       clip               name (in the package's resources)
 */
function read(entry, view) {
    var content = { title: "", shortcut: "", key: "", blocks: [] };
    if (!entry)
        return content;
    var reader = new Reader(entry, view, content.blocks);
    var children = childrenOf(entry);
    content.key = entry.attribute("key");
    content.shortcut = reader.plain(entry.attribute("shortcut"));
    content.title = reader.plain(titleOf(entry, children));
    reader.addClip(entry.attribute("clip"));
    reader.addParagraph(entry.content);
    reader.addChildren(children.filter(function(child) { return child.tagName !== "title"; }));
    return content;
}

/// Markup as it is read out.
function spokenMarkup(markup) {
    return simplified(markup.replace(/<(?:br|p|li|ul|ol)\b[^<>]*>/gi, " ").replace(/<[^<>]*>/g, ""))
        .replace(/&(?:#x([0-9a-f]+)|#([0-9]+)|([a-z]+));/gi, function(all, hex, decimal, name) {
            if (name)
                return ENTITIES[name.toLowerCase()] || all;
            return String.fromCharCode(hex ? parseInt(hex, 16) : parseInt(decimal, 10));
        });
}

/// What a block says; nothing for a clip.
function spoken(block) {
    return block.format === "styled" || block.format === "rich" ? spokenMarkup(block.text)
                                                                : block.text || "";
}

/// What there is to read beside the title, a line for each.
function spokenContent(content, blocks) {
    return [content.shortcut].concat(blocks.map(spoken)).filter(function(text) {
        return text;
    }).join("\n");
}

/// A text of the user interface's own, in the reader's language.
function translated(view, text) {
    return view ? view.translate(text, "HovletsUI") || text : text;
}

/// The first paragraph among \a blocks, in a list, or an empty list.
function firstParagraph(blocks) {
    return blocks.filter(function(block) { return block.kind === "paragraph"; }).slice(0, 1);
}

/// The direct children: the element lists its whole subtree, each child before its own.
function childrenOf(element) {
    var all = element.childElementList("");
    var children = [];
    for (var i = 0; i < all.length; i += 1 + all[i].childElementList("").length)
        children.push(all[i]);
    return children;
}

function titleOf(entry, children) {
    var title = entry.attribute("title");
    for (var i = 0; !title && i < children.length; ++i) {
        if (children[i].tagName === "title")
            title = allText(children[i]);
    }
    return title;
}

function allText(element) {
    return childrenOf(element).reduce(function(text, child) {
        return text + " " + allText(child);
    }, element.content);
}

/// White space as XML authors mean it. A no-break space is no white space here.
function simplified(text) {
    return text.replace(/[ \t\r\n\f]+/g, " ").replace(/^ | $/g, "");
}

function escaped(text) {
    return text.replace(/&/g, "&amp;").replace(/</g, "&lt;");
}

/// Whether a locator names a documentation topic: no scheme and no path.
function isTopic(locator) {
    return !/^[a-z][-+.a-z0-9]*:/i.test(locator) && locator.indexOf("/") < 0;
}

/*
 * The light-weight format where it will do: links in the full one are struck through rather than
 * underlined by Qt 5 at some font sizes.
 */
function formatOf(markup) {
    return MARKUP.test(markup.replace(SIMPLE_MARKUP, "")) ? "rich" : "styled";
}

function fileUrl(path) {
    var encoded = path.split("/").map(encodeURIComponent).join("/");
    if (path.charAt(0) === ":") // in Qt's resources
        return "qrc:" + encoded.slice(encoded.indexOf("/"));
    if (path.indexOf("//") === 0)
        return "file:" + encoded;
    return (path.charAt(0) === "/" ? "file://" : "file:///") + encoded;
}

function Reader(entry, view, blocks) {
    this.view = view;
    this.context = entry.attribute("key");
    this.topics = view ? view.documentationAvailable : false;
    this.blocks = blocks;
}

/// The translation, or the text itself where the translation file lacks it.
Reader.prototype.translated = function(text) {
    var source = simplified(text);
    return source && this.view ? this.view.translate(source, this.context) || source : source;
};

Reader.prototype.filled = function(text) {
    return text && this.view ? this.view.interpolate(text) : text;
};

Reader.prototype.plain = function(text) {
    return this.filled(this.translated(text));
};

/// Safe markup: only the known tags, values shown as they are, no links that cannot be followed.
Reader.prototype.markup = function(text) {
    var reader = this;
    return text.replace(STRAY_BRACKET, "&lt;").replace(LINK, function(link, double, single, label) {
        return reader.topics || !isTopic(double || single || "") ? link : label;
    }).replace(PLACEHOLDER, function(placeholder) {
        return escaped(reader.filled(placeholder));
    });
};

Reader.prototype.addParagraph = function(text, muted) {
    var translated = this.translated(text);
    if (!translated)
        return;
    var isMarkup = MARKUP.test(translated);
    var shown = isMarkup ? this.markup(translated) : this.filled(translated);
    var format = isMarkup ? formatOf(shown) : "plain";
    if (format === "styled")
        shown = shown.replace(/<(\/?)em>/gi, "<$1i>"); // the one that Qt 5 does not know there
    this.blocks.push({ kind: "paragraph", text: shown, format: format, muted: !!muted });
};

Reader.prototype.addLink = function(locator, label) {
    if (this.topics || !isTopic(locator))
        this.blocks.push({ kind: "link", text: this.plain(label) || locator, locator: locator });
};

Reader.prototype.addImage = function(path, description) {
    var found = this.resource(path);
    if (found)
        this.blocks.push({ kind: "image", source: fileUrl(found), text: this.plain(description) });
    else
        this.addParagraph(description, true);
};

Reader.prototype.addClip = function(path) {
    if (this.resource(path))
        this.blocks.push({ kind: "clip", name: path });
};

/// The path of a file in the resources, or an empty string: the look-up itself then returns the
/// folder's name.
Reader.prototype.resource = function(path) {
    var name = path.split("/").pop();
    var found = name && this.view ? this.view.findResource(path) : "";
    return found.split("/").pop() === name ? found : "";
};

Reader.prototype.addChildren = function(children) {
    children.forEach(this.addElement, this);
};

Reader.prototype.addElement = function(element) {
    var tag = element.tagName;
    if (tag === "link" && element.attribute("href")) {
        this.addLink(element.attribute("href"), allText(element));
    } else if (tag === "img") {
        this.addImage(element.attribute("src"), element.attribute("alt"));
    } else {
        // Elements in a paragraph are no markup, as their place in the text is not known here:
        // their words follow it. What is more than a word becomes a block of its own.
        var isWord = function(child) { return WORD_ELEMENT.test(child.tagName); };
        var children = childrenOf(element);
        this.addParagraph(children.filter(isWord).reduce(function(text, child) {
            return text + " " + allText(child);
        }, element.content));
        this.addChildren(children.filter(function(child) { return !isWord(child); }));
    }
};
