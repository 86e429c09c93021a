// SPDX-License-Identifier: Apache-2.0
#include "HostileInputs.h"

namespace {

QByteArray cdata(const QByteArray &text)
{
    return "<p><![CDATA[" + text + "]]></p>";
}

} // namespace

QList<HostileInput> hostileTexts()
{
    QList<HostileInput> inputs;
    const auto add = [&](const char *name, int size, const QByteArray &children) {
        inputs.append({ "text", QByteArray(name) + " " + QByteArray::number(size),
                        [=](const HostilePackage &package) { package.entry({}, children); } });
    };
    for (const int size : { 280, 5000, 60000 }) {
        add("lists", size, cdata(times(size, "<ul><li>x")));
        add("ordered lists", size, cdata(times(size, "<ol type=\"i\" start=\"2000000000\"><li>")));
        add("tables", size, cdata(times(size, "<table><tr><td>x")));
        add("cells", size, cdata("<table><tr>" + times(size, "<td>x</td>")));
        add("quotations", size, cdata(times(size, "<blockquote>x")));
        add("links", size, cdata(times(size, "<a href=\"x\">")));
        add("less-than", size, cdata(times(size, "<")));
        add("tags without an end", size, cdata(times(size, "<b ")));
        add("attributes", size, cdata("<b " + times(size, "a=\"\" ") + ">x"));
        add("ampersands", size, cdata("<b>" + times(size, "&")));
        add("references", size, cdata("<b>" + times(size, "&#x1F600;")));
        add("a word", size, "<p>" + times(size, "w") + "</p>");
        add("a word in markup", size, cdata("<b>" + times(size, "w")));
        add("a title", size, "<title>" + times(size, "w ") + "</title>");
        add("placeholders", size, "<p>" + times(size, "%(application)s") + "</p>");
        add("open placeholders", size, "<p>" + times(size, "%(") + "</p>");
        add("paragraphs", size, times(size, "<p>x</p>"));
        add("bold", size, cdata(times(size, "<b>x</b>")));
        add("nested bold", size, cdata(times(size, "<b><i><u>x")));
        add("fonts", size, cdata(times(size, "<font size=\"7\" color=\"red\">x")));
        add("elements in elements", size,
            times(size / 40, "<x>y<p>z</p>") + times(size / 40, "</x>"));
        add("pictures", size, times(size, "<img src=\"x.png\" alt=\"y\"/>"));
        add("pictures in markup", size, cdata(times(size, "<img src=\"/dev/zero\">x")));
        add("links as elements", size, times(size, "<link href=\"http://x\">y</link>"));
        add("clips", size, times(size, "<video src=\"x.mp4\"/>"));
        add("accents", size, "<p>" + times(size, "\xcc\x81") + "</p>");
        add("directions", size, "<p>" + times(size, "\xe2\x80\xae x\xd8\xb4") + "</p>");
        add("marks on a letter", size, "<p>\xd8\xa8" + times(size, "\xd9\x8b") + "</p>");
        add("embedded directions", size, "<p>" + times(size, "\xe2\x80\xab\xd7\x90 x") + "</p>");
        add("end tags", size, cdata(times(size, "</b>")).repeated(10));
        add("styles", size,
            cdata("<p style=\"" + times(size / 10, "color:red;") + "\">x").repeated(48));
        add("emoji", size, "<p>" + times(size, "\xf0\x9f\x91\xa9\xe2\x80\x8d") + "</p>");
        add("no breaks", size, "<p>" + times(size, "x\xc2\xa0") + "</p>");
        add("tabs", size, "<p>" + times(size, "\t&#9;") + "</p>");
        add("lines", size, cdata(times(size, "<br>")));
        add("comments", size, cdata("<b>" + times(size, "<!-- ")));
        add("white space", size, cdata("<pre>" + times(size, " \n")));
    }
    for (const int size : { 1000, 2000000000 }) {
        const QByteArray number = QByteArray::number(size);
        add("font size", size, cdata("<font size=\"" + number + "\">x</font>"));
        add("style", size,
            cdata("<p style=\"font-size:" + number + "pt;margin:" + number + "px\">x</p>"));
        add("picture width", size,
            cdata("<img src=\"x.png\" width=\"" + number + "\" height=\"" + number + "\">"));
        add("table width", size,
            cdata("<table width=\"" + number + "\" border=\"" + number + "\" cellpadding=\""
                  + number + "\"><tr><td colspan=\"" + number + "\" rowspan=\"" + number
                  + "\">x</td></tr></table>"));
        add("indentation", size,
            cdata("<ul style=\"-qt-list-indent:" + number + "\"><li>x</li></ul>"));
    }
    return inputs;
}
