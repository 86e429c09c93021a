// SPDX-License-Identifier: Apache-2.0
#include "HostileInputs.h"

namespace {

QByteArray cdata(const QByteArray &text)
{
    return "<p><![CDATA[" + text + "]]></p>";
}

/// Different letters in four large sizes.
QByteArray lettersInSizes(int count)
{
    QByteArray text;
    for (int size = 72; size > 68; --size) {
        text += "<span style=\"font-size:" + QByteArray::number(size) + "pt\">";
        for (int i = 0; i < count; ++i)
            text += QString(QChar(0x4e00 + i % 0x5000)).toUtf8();
        text += "</span>";
    }
    return cdata(text);
}

/// Makes the children of an entry in the size given.
struct Text
{
    const char *name;
    QByteArray (*children)(int size);
};

constexpr Text Texts[] = {
    { "lists", [](int size) { return cdata(times(size, "<ul><li>x")); } },
    { "ordered lists",
      [](int size) { return cdata(times(size, "<ol type=\"i\" start=\"2000000000\"><li>")); } },
    { "tables", [](int size) { return cdata(times(size, "<table><tr><td>x")); } },
    { "cells", [](int size) { return cdata("<table><tr>" + times(size, "<td>x</td>")); } },
    { "quotations", [](int size) { return cdata(times(size, "<blockquote>x")); } },
    { "links", [](int size) { return cdata(times(size, "<a href=\"x\">")); } },
    { "less-than", [](int size) { return cdata(times(size, "<")); } },
    { "tags without an end", [](int size) { return cdata(times(size, "<b ")); } },
    { "attributes", [](int size) { return cdata("<b " + times(size, "a=\"\" ") + ">x"); } },
    { "ampersands", [](int size) { return cdata("<b>" + times(size, "&")); } },
    { "references", [](int size) { return cdata("<b>" + times(size, "&#x1F600;")); } },
    { "a word", [](int size) { return "<p>" + times(size, "w") + "</p>"; } },
    { "a word in markup", [](int size) { return cdata("<b>" + times(size, "w")); } },
    { "a title", [](int size) { return "<title>" + times(size, "w ") + "</title>"; } },
    { "placeholders", [](int size) { return "<p>" + times(size, "%(application)s") + "</p>"; } },
    { "open placeholders", [](int size) { return "<p>" + times(size, "%(") + "</p>"; } },
    { "paragraphs", [](int size) { return times(size, "<p>x</p>"); } },
    { "bold", [](int size) { return cdata(times(size, "<b>x</b>")); } },
    { "nested bold", [](int size) { return cdata(times(size, "<b><i><u>x")); } },
    { "fonts", [](int size) { return cdata(times(size, "<font size=\"7\" color=\"red\">x")); } },
    { "elements in elements",
      [](int size) { return times(size / 40, "<x>y<p>z</p>") + times(size / 40, "</x>"); } },
    { "pictures", [](int size) { return times(size, "<img src=\"x.png\" alt=\"y\"/>"); } },
    { "pictures in markup",
      [](int size) { return cdata(times(size, "<img src=\"/dev/zero\">x")); } },
    { "links as elements",
      [](int size) { return times(size, "<link href=\"http://x\">y</link>"); } },
    { "list elements",
      [](int size) { return times(size / 40, "<ul><li>x") + times(size / 40, "</li></ul>"); } },
    { "items", [](int size) { return "<ol>" + times(size, "<li>x</li>") + "</ol>"; } },
    { "rows",
      [](int size) { return "<table>" + times(size, "<tr><td>x</td></tr>") + "</table>"; } },
    { "columns",
      [](int size) {
          return "<table><tr>" + times(size, "<td>long words</td>") + "</tr></table>";
      } },
    { "words in cells",
      [](int size) {
          return "<table>"
                  + times(15,
                          "<tr>" + times(15, "<td>" + times(size / 2, "w ") + "</td>") + "</tr>")
                  + "</table>";
      } },
    { "tables in items",
      [](int size) {
          return times(size,
                       "<ul><li>x<table><tr><td>x<ul><li>x</li></ul></td></tr></table></li></ul>");
      } },
    { "lines of code", [](int size) { return "<pre>" + times(size, "x\n") + "</pre>"; } },
    { "tabs in code", [](int size) { return "<pre>" + times(size, "\tx") + "</pre>"; } },
    { "notes", [](int size) { return times(size, "<note>x</note>"); } },
    { "headings", [](int size) { return times(size, "<h2>x</h2>"); } },
    { "clips", [](int size) { return times(size, "<video src=\"x.mp4\"/>"); } },
    { "accents", [](int size) { return "<p>" + times(size, "\xcc\x81") + "</p>"; } },
    { "directions",
      [](int size) { return "<p>" + times(size, "\xe2\x80\xae x\xd8\xb4") + "</p>"; } },
    { "marks on a letter",
      [](int size) { return "<p>\xd8\xa8" + times(size, "\xd9\x8b") + "</p>"; } },
    { "embedded directions",
      [](int size) { return "<p>" + times(size, "\xe2\x80\xab\xd7\x90 x") + "</p>"; } },
    { "scripts", [](int size) { return "<p>" + times(size, "w\xd0\xb0\xce\xb1") + "</p>"; } },
    { "directions of letters", [](int size) { return cdata("<b>" + times(size, "w\xd8\xb4")); } },
    { "numbers in Hebrew", [](int size) { return "<p>" + times(size, "\xd7\x90 1") + "</p>"; } },
    { "joined letters",
      [](int size) { return "<title>" + times(size, "w\xe2\x80\x8d") + "</title>"; } },
    { "small kana", [](int size) { return "<title>" + times(size, "\xe3\x81\xa3") + "</title>"; } },
    { "full stops", [](int size) { return cdata("<b>" + times(size, "\xe3\x80\x81")); } },
    { "notes of words",
      [](int size) {
          return times(size,
                       "<note>many words in each of these notes, which wrap, and again</note>");
      } },
    { "paragraphs of words",
      [](int size) {
          return times(size,
                       "<p>many words in each of these paragraphs, which wrap, and again</p>");
      } },
    { "blocks of code",
      [](int size) {
          return times(size,
                       "<pre>many words in each of these lines, which wrap, and once again</pre>");
      } },
    { "end tags", [](int size) { return cdata(times(size, "</b>")).repeated(10); } },
    { "styles",
      [](int size) {
          return cdata("<p style=\"" + times(size / 10, "color:red;") + "\">x").repeated(48);
      } },
    { "emoji",
      [](int size) { return "<p>" + times(size, "\xf0\x9f\x91\xa9\xe2\x80\x8d") + "</p>"; } },
    { "no breaks", [](int size) { return "<p>" + times(size, "x\xc2\xa0") + "</p>"; } },
    { "Hangul", [](int size) { return "<p>" + times(size, "\xea\xb0\x80") + "</p>"; } },
    { "large letters", [](int size) { return lettersInSizes(size); } },
    { "tabs", [](int size) { return "<p>" + times(size, "\t&#9;") + "</p>"; } },
    { "lines", [](int size) { return cdata(times(size, "<br>")); } },
    { "comments", [](int size) { return cdata("<b>" + times(size, "<!-- ")); } },
    { "white space", [](int size) { return cdata("<pre>" + times(size, " \n")); } },
};

/// The same with a number in the text.
struct TextWithNumber
{
    const char *name;
    QByteArray (*children)(const QByteArray &number);
};

constexpr TextWithNumber Numbers[] = {
    { "font size",
      [](const QByteArray &number) { return cdata("<font size=\"" + number + "\">x</font>"); } },
    { "style",
      [](const QByteArray &number) {
          return cdata("<p style=\"font-size:" + number + "pt;margin:" + number + "px\">x</p>");
      } },
    { "picture width",
      [](const QByteArray &number) {
          return cdata("<img src=\"x.png\" width=\"" + number + "\" height=\"" + number + "\">");
      } },
    { "table width",
      [](const QByteArray &number) {
          return cdata("<table width=\"" + number + "\" border=\"" + number + "\" cellpadding=\""
                       + number + "\"><tr><td colspan=\"" + number + "\" rowspan=\"" + number
                       + "\">x</td></tr></table>");
      } },
    { "indentation",
      [](const QByteArray &number) {
          return cdata("<ul style=\"-qt-list-indent:" + number + "\"><li>x</li></ul>");
      } },
};

} // namespace

QList<HostileInput> hostileTexts()
{
    QList<HostileInput> inputs;
    const auto add = [&](const char *name, int size, const std::function<QByteArray()> &children) {
        inputs.append({ "text", QByteArray(name) + " " + QByteArray::number(size),
                        [=](const HostilePackage &package) { package.entry({}, children()); } });
    };
    for (const int size : { 280, 5000, 60000 }) {
        for (const Text &text : Texts)
            add(text.name, size, [=] { return text.children(size); });
    }
    for (const int size : { 1000, 2000000000 }) {
        for (const TextWithNumber &text : Numbers)
            add(text.name, size, [=] { return text.children(QByteArray::number(size)); });
    }
    return inputs;
}
