// SPDX-License-Identifier: Apache-2.0
#include "ControlFileGenerator.h"

namespace {

/// Bytes that readers stumble over: end-of-data marks, null bytes, broken UTF-8, a byte-order mark.
const QList<QByteArray> &oddBytes()
{
    static const QList<QByteArray> bytes {
        QByteArray("\0", 1),
        "\xef\xbf\xbe",
        "\xef\xbf\xbf",
        "\xef\xbf\xbd",
        "\xef\xbb\xbf",
        "\xff",
        "\xc0\xbc",
        "\xed\xa0\x80",
        "\xc2\x85",
        "\xe2\x80\xa8",
        "\xc3",
        "\x01",
        "\x0b",
        "\x0c",
        "\xf0\x9f\x98\x80",
    };
    return bytes;
}

template <typename Unit> QByteArray units(const QString &text, bool bigEndian, bool mark)
{
    QByteArray bytes;
    const auto append = [&](Unit unit) {
        for (size_t i = 0; i < sizeof unit; ++i) {
            const size_t byte = bigEndian ? sizeof unit - 1 - i : i;
            bytes += char((unit >> (8 * byte)) & 0xff);
        }
    };
    if (mark)
        append(0xfeff);
    for (QChar c : text)
        append(c.unicode());
    return bytes;
}

} // namespace

ControlFileGenerator::ControlFileGenerator(quint32 seed)
    : m_random(seed)
{
}

QStringList ControlFileGenerator::keys()
{
    QStringList keys { QString() };
    for (const char *key : { "a",
                             "A",
                             "b",
                             "a b",
                             "a&b",
                             "<a>",
                             "\"a'",
                             "a\tb",
                             "a\nb",
                             "a\r\nb",
                             "&amp;",
                             "&#97;",
                             "/",
                             ">",
                             "key",
                             "\xc3\xa4",
                             "\xe6\x97\xa5\xe6\x9c",
                             "\xf0\x9f\x98\x80",
                             "\xef\xbf\xbe",
                             "a\xef\xbf\xbf" })
        keys += QString::fromUtf8(key);
    keys += QString(QChar(0xfeff)) + QLatin1Char('a');
    keys += QString(QChar(0xd800));
    keys += QStringLiteral("a") + QChar(0xdc00);
    keys += QString(QChar(0));
    keys += QStringLiteral("a") + QChar(0);
    return keys;
}

QByteArray ControlFileGenerator::controlFile()
{
    const QStringList all = keys();
    m_key = (oneIn(4) ? all.at(below(int(all.size()))) : QStringLiteral("a")).toUtf8();

    const QByteArray root = oneIn(12)
            ? pick({ "hovlet", "x", "hovletsX", "x:hovlets", "Hovlets", "_" })
            : "hovlets";
    QByteArray file = prolog() + '<' + root;
    while (oneIn(4))
        file += space() + attribute();
    if (oneIn(6))
        file += " locale=\"" + pick({ "de_DE", "en_US", "", "&#101;n", "en" }) + '"';
    file += pick({ "", "", " ", "\n" }) + '>';
    for (int i = below(4); i >= 0; --i)
        file += content(0);
    file += "</" + root + pick({ ">", ">", ">", " >", "\n>" });
    if (oneIn(8))
        file += pick({ "\n", "text", "<!-- <hovlet key='a'/> -->", "<hovlets/>", "<?pi?>", "&a;" });
    return encoded(damaged(file));
}

QByteArray ControlFileGenerator::declaration()
{
    return pick({ "<?xml version=\"1.0\"?>", "<?xml version='1.0' encoding='UTF-8'?>",
                  "<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"yes\"?>",
                  "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>",
                  "<?xml version=\"1.0\" encoding=\"US-ASCII\"?>",
                  "<?xml version=\"1.0\" encoding=\"UTF-16\"?>",
                  "<?xml version=\"1.0\" encoding=\"UTF-7\"?>",
                  "<?xml version=\"1.0\" encoding=\"Shift_JIS\"?>",
                  "<?xml version=\"1.0\" encoding = 'ISO-8859-15'?>",
                  "<?xml version=\"1.0\" encoding=\"UTF-8x\"?>",
                  "<?xml version=\"1.0\" x=\">\" encoding=\"ISO-8859-1\"?>",
                  "<?xml version=\"1.0\" encoding=\"UTF-8\" encoding=\"ISO-8859-1\"?>",
                  "<?xml-stylesheet href='a' encoding='ISO-8859-1'?>", "<?xml version=\"1.1\"?>",
                  "<?xml encoding=ISO-8859-1 'UTF-8'?>", "<?XML encoding='UTF-16'?>" });
}

QByteArray ControlFileGenerator::documentType()
{
    const QByteArray entity = "<!ENTITY a 'a'><!ENTITY e '<hovlet key=\"" + m_key + "\"/>'>";
    return pick({ "<!DOCTYPE hovlets>", "<!DOCTYPE hovlets [" + entity + "]>",
                  "<!DOCTYPE hovlets [" + entity + "<!ENTITY % p \"<!ENTITY q 'a'>\">%p;]>",
                  "<!DOCTYPE hovlets [<!ATTLIST hovlet key CDATA 'a'>]>",
                  "<!DOCTYPE hovlets [<!ATTLIST hovlet key NMTOKENS #IMPLIED>" + entity + "]>",
                  "<!DOCTYPE hovlets SYSTEM 'no.dtd'>", "<!doctype hovlets>" });
}

QByteArray ControlFileGenerator::prolog()
{
    QByteArray text;
    if (oneIn(10))
        text += "\xef\xbb\xbf";
    if (oneIn(20))
        text += space();
    if (oneIn(2))
        text += declaration();
    while (oneIn(4))
        text += pick({ "\n", "<!-- <hovlet key=\"a\"> -->", "<!---->", "<!-- > ?> -->",
                       "<?pi <hovlet key=\"a\"/> ?>", "<!-- encoding=\"UTF-16\" -->",
                       documentType(), documentType() });
    return text + pick({ "", "\n", "\r\n" });
}

QByteArray ControlFileGenerator::space()
{
    return pick({ " ", " ", " ", "\n", "\t", "\r\n", "\r", "  " });
}

/// A key in one of its spellings, with both kinds of quotes escaped.
QByteArray ControlFileGenerator::value()
{
    QByteArray value = oneIn(3) ? pick({ "a", "b", "", "A", "aa", " a", "a ", "\xc3\xa4" }) : m_key;
    if (oneIn(20))
        value.insert(below(int(value.size()) + 1), pick(oddBytes()));
    QByteArray text;
    for (char c : std::as_const(value)) {
        const QByteArray number = QByteArray::number(uchar(c));
        const bool special = c == '<' || c == '&' || c == '"' || c == '\'';
        if ((special && !oneIn(8)) || (uchar(c) < 0x80 && oneIn(12)))
            text += pick({ "&#" + number + ';', "&#x" + QByteArray::number(uchar(c), 16) + ';',
                           "&#0" + number + ';' });
        else
            text += c;
    }
    if (oneIn(20)) {
        text.insert(below(int(text.size()) + 1),
                    pick({ "&no;", "&a;", "&amp;", "&", "&#;", "&#xfffe;", "&#0;", "&#xd800;" }));
    }
    return text;
}

QByteArray ControlFileGenerator::attribute()
{
    const QByteArray name = oneIn(2) ? QByteArray("key")
                                     : pick({ "name", "Key", "x:key", "xmlns", "xmlns:x", "keys",
                                              "key:x", "_key", "\xc3\xa4", "xml:key", ":key" });
    const char quote = oneIn(3) ? '\'' : '"';
    const QByteArray equals = pick({ "=", "=", "=", " =", "= ", "\n=\t" });
    if (oneIn(80))
        return pick({ name, name + '=', name + "=a", '=' + value(), "\"a\"" });
    return name + equals + quote + value() + quote;
}

QByteArray ControlFileGenerator::element(int depth)
{
    const QByteArray tag = oneIn(3)
            ? pick({ "hovlets", "title", "hovletX", "hovlet-", "hovlet.", "hovlet:x", "x:hovlet",
                     "Hovlet", "hovle", "HVXmlElement", "hovlet\xc3\xa4" })
            : QByteArray("hovlet");
    QByteArray start = '<' + tag;
    bool first = true;
    while (oneIn(first ? 1 : 3) && !(first && oneIn(8))) {
        start += (oneIn(30) ? QByteArray() : space()) + attribute();
        first = false;
    }
    start += pick({ "", "", "", " ", "\n" });
    if (oneIn(3))
        return start + pick({ "/>", "/>", "/>", "/>", "/ >" });
    QByteArray body;
    while (depth < 3 && oneIn(2))
        body += content(depth + 1);
    return start + '>' + body + "</" + tag + '>';
}

QByteArray ControlFileGenerator::content(int depth)
{
    switch (below(10)) {
    case 0:
        return pick(
                { "text", "\n  ", "&amp;", "&no;", "&e;", "&a;", "&q;", ">", "key=\"a\"", "'" });
    case 1:
        return pick({ "<!-- <hovlet key=\"a\"/> -->", "<!-- <hovlet -->", "<!-- <hovlets> -->",
                      "<![CDATA[<hovlet key=\"a\"/>]]>", "<![CDATA[ <hovlet ]]>",
                      "<?pi <hovlet key=\"a\"/>?>", "<!-- ' -->", "<![CDATA[]]]]>" });
    default:
        return element(depth);
    }
}

/// The file as it is, cut short, or with a few bytes removed or added.
QByteArray ControlFileGenerator::damaged(QByteArray file)
{
    if (oneIn(15))
        file.truncate(below(int(file.size()) + 1));
    while (oneIn(10)) {
        const int at = below(int(file.size()) + 1);
        switch (below(4)) {
        case 0:
            file.remove(at, 1 + below(3));
            break;
        case 1:
            file.insert(at,
                        pick({ "<", ">", "\"", "'", "&", "/", "=", " ", "<hovlet", "<hovlets>",
                               "hovlet", "-->", "]]>", "<!--", "<![CDATA[", "?>" }));
            break;
        default:
            file.insert(at, pick(oddBytes()));
        }
    }
    return file;
}

QByteArray ControlFileGenerator::encoded(const QByteArray &file)
{
    if (!oneIn(12))
        return file;
    const QString text = QString::fromUtf8(file);
    const bool bigEndian = oneIn(2);
    const bool mark = oneIn(2);
    switch (below(3)) {
    case 0:
        return text.toLatin1();
    case 1:
        return units<quint16>(text, bigEndian, mark);
    default:
        return units<quint32>(text, bigEndian, mark);
    }
}
