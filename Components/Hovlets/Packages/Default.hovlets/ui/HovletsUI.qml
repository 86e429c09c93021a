// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15
import "Content.js" as Content

/*
 * The full popup. It shows entries of this form, of which only the key is mandatory:
 *
 *   <hovlet key="save" title="Save" shortcut="Ctrl+S">
 *     <p>Writes the document to its file.</p>
 *     <p><![CDATA[Hold <b>Shift</b> to choose <i>another</i> file.]]></p>
 *     <img src="save.png" alt="The Save dialogue"/>
 *     <link href="https://example.org/save">About file formats</link>
 *     <link href="SavingDocuments">Saving documents</link>
 *   </hovlet>
 *
 * Attributes of the entry
 *   title      the title; a child element <title> has the same effect
 *   shortcut   the keyboard shortcut, shown as a key beside the title
 *   clip       a clip in the package's resources, in any format that FFmpeg opens; shown at the
 *              top, paused while the popup is hidden
 *   loop       "true" plays the clip again and again instead of once
 *   captions   a file with the clip's captions; by default the one beside the clip that has its name
 *              and the extension "vtt"
 *
 * Child elements, shown in order
 *   <p>, <text>   a paragraph
 *   <img>         a picture from the package's resources, at its natural size or scaled down to the
 *                 popup's width; the text "alt" replaces a missing picture;
 *                 "caption" is shown below it
 *   <link>        a link to an address, a file (it contains "/") or a documentation topic, which is
 *                 omitted while no documentation is available; the label defaults to the address
 *   <button>      a button with the attribute "href", which it opens like a link
 *   <h2>, <h3>    a heading
 *   <ul>, <ol>    a list of <li>, which may contain further lists
 *   <table>       rows <tr> of cells <th> and <td>
 *   <pre>         code: keeps its lines and spaces, and is not translated
 *   <note>, <warning>   a paragraph with a mark and a label
 *   others        a paragraph with their text, then their own children
 *
 * Paragraphs are plain text unless they contain one of the tags a, b, big, br, code, em, font, i, kbd,
 * li, ol, p, s, samp, small, span, strong, sub, sup, tt, u, ul, or an entity such as &nbsp;. As
 * elements of the control file, tags would lose their place in the text. Therefore write the
 * paragraph in CDATA, or its "<" as "&lt;". All other tags are shown as they are written. Only
 * harmless attributes remain: no text can name a file, an address to load or a font. Runs of white
 * space count as one space; <br> breaks a line.
 *
 * Every text is translated in the context of the entry's key. The source text has its white space
 * reduced in this way. A text that the translation file lacks is shown untranslated. Then the
 * placeholders "%(name)s" are filled with plain text.
 *
 * The texts of the user interface itself have the context "HovletsUI": "Keep open", "Keep open (%1)",
 * "Close", "Play", "Pause", "Play again", "Position in the clip", "Scroll" and "Pinned", which only
 * screen readers read, "Note", "Warning" and "%1 for more". "%1" is a key.
 *
 * If the host sets the global property "reducedMotion" to true, a clip shows its last frame until
 * it is clicked, and a simple popup becomes the full one without a fade. Nothing else in the popup
 * moves by itself.
 */
PopupFrame {
    content: Content.read(hovlet, hovletReader, hovletView)
    blocks: content.blocks
    pinnable: true
}
