// SPDX-License-Identifier: Apache-2.0
#include "HostileInputs.h"

#include <QtCore/QtEndian>

namespace {

QByteArray numbered(int count, const char *before, const char *after)
{
    QByteArray all;
    for (int i = 0; i < count; ++i)
        all += before + QByteArray::number(i) + after;
    return all;
}

QByteArray withType(const QByteArray &declarations)
{
    return "<!DOCTYPE hovlets [" + declarations + "]>";
}

QByteArray utf16(const QByteArray &text)
{
    const QString string = QString::fromUtf8(text);
    return "\xff\xfe"
            + QByteArray(reinterpret_cast<const char *>(string.utf16()),
                         static_cast<int>(2 * string.size()));
}

QByteArray document(const QByteArray &prolog, const QByteArray &inRoot, const QByteArray &rootTag)
{
    return prolog + "\n<hovlets search=\"Default\"" + rootTag
            + ">\n<hovlet key=\"attack\" title=\"t\"/>" + inRoot + "</hovlets>\n";
}

class Documents
{
public:
    void add(const char *corpus, const QByteArray &name, int size,
             const std::function<QByteArray()> &file)
    {
        inputs.append({ corpus, name + " " + QByteArray::number(size),
                        [file](const HostilePackage &package) { package.control(file()); } });
    }

    QList<HostileInput> inputs;
};

void addRecursion(Documents &all)
{
    for (const int size : { 1000, 80000, 1000000 }) {
        const char *corpus = "recursion";
        all.add(corpus, "content model", size,
                [=] { return document(withType("<!ELEMENT a " + times(size, "(")), {}, {}); });
        all.add(corpus, "content model by sequence", size, [=] {
            return document(withType("<!ELEMENT a " + times(size, "(a,") + "b"), {}, {});
        });
        all.add(corpus, "content model in an entity", size, [=] {
            return document(withType("<!ENTITY % p '" + times(size, "(") + "'> <!ELEMENT a %p;>"),
                            {}, {});
        });
        all.add(corpus, "elements", size, [=] { return document({}, times(size, "<x>"), {}); });
        all.add(corpus, "conditional sections", size,
                [=] { return document(withType(times(size, "<![INCLUDE[")), {}, {}); });
        all.add(corpus, "nested entities", size / 20, [=] {
            QByteArray entities = "<!ENTITY e0 'x'>";
            for (int i = 1; i < size / 20; ++i) {
                entities += "<!ENTITY e" + QByteArray::number(i) + " '&e"
                        + QByteArray::number(i - 1) + ";'>";
            }
            return document(withType(entities),
                            "<p>&e" + QByteArray::number(size / 20 - 1) + ";</p>", {});
        });
        all.add(corpus, "choices in attributes", size, [=] {
            return document(withType("<!ATTLIST a b (" + times(size, "x|") + "y) 'x'>"), {}, {});
        });
    }
}

void addEntities(Documents &all)
{
    const char *corpus = "entities";
    for (const int size : { 10, 1000, 60000 }) {
        all.add(corpus, "one, in use", size, [=] {
            return document(withType("<!ENTITY e '" + times(size, "x") + "'>"),
                            "<p>" + times(60000, "&e;") + "</p>", {});
        });
        all.add(corpus, "parameter with a comment", size, [=] {
            return document(withType("<!ENTITY % c '<!--" + times(size, "x") + "-->'>"
                                     + times(1000, "%c;")),
                            {}, {});
        });
        all.add(corpus, "declared", size,
                [=] { return document(withType(numbered(size, "<!ENTITY e", " 'x'>")), {}, {}); });
        all.add(corpus, "in attributes", size, [=] {
            return document(withType("<!ENTITY e '" + times(size, "\"'") + "'>"),
                            numbered(2000, "<p a='&e;' b='", "'/>"), {});
        });
    }
    all.add(corpus, "laughs", 10, [] {
        QByteArray entities = "<!ENTITY l0 'lol'>";
        for (int i = 1; i < 10; ++i) {
            entities += "<!ENTITY l" + QByteArray::number(i) + " '"
                    + ("&l" + QByteArray::number(i - 1) + ";").repeated(10) + "'>";
        }
        return document(withType(entities), "<p>&l9;</p>", {});
    });
    all.add(corpus, "external", 1, [] {
        return document(withType("<!ENTITY e SYSTEM '/dev/zero'>"
                                 "<!ENTITY % f SYSTEM 'file:///dev/zero'>%f;"),
                        "<p>&e;</p>", {});
    });
}

void addSizes(Documents &all)
{
    const char *corpus = "size";
    const QByteArray latin = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>";
    for (const int megabytes : { 2, 14, 60 }) {
        const int size = megabytes * 1000000;
        all.add(corpus, "text in Latin-1, MB", megabytes,
                [=] { return document(latin, QByteArray(size, 'x'), {}); });
        all.add(corpus, "text in UTF-8, MB", megabytes,
                [=] { return document({}, "<p>" + QByteArray(size, 'x') + "</p>", {}); });
        all.add(corpus, "text of the root, MB", megabytes,
                [=] { return document({}, QByteArray(size, 'x'), {}); });
        all.add(corpus, "attribute, MB", megabytes, [=] {
            return document({}, "<hovlet key=\"b\" a=\"" + QByteArray(size, 'x') + "\"/>", {});
        });
        all.add(corpus, "attribute of the root, MB", megabytes,
                [=] { return document({}, {}, " a=\"" + QByteArray(size, 'x') + "\""); });
        all.add(corpus, "comment, MB", megabytes,
                [=] { return document({}, "<!--" + QByteArray(size, 'x') + "-->", {}); });
        all.add(corpus, "instruction, MB", megabytes,
                [=] { return document({}, "<?a " + QByteArray(size, 'x') + "?>", {}); });
        all.add(corpus, "CDATA, MB", megabytes,
                [=] { return document({}, "<![CDATA[" + QByteArray(size, 'x') + "]]>", {}); });
        all.add(corpus, "references, MB", megabytes,
                [=] { return document({}, numbered(size / 9, "&#", ";"), {}); });
        all.add(corpus, "entries, MB", megabytes, [=] {
            return document({},
                            numbered(size / 70, "<hovlet key=\"k",
                                     "\" title=\"Title\"><p>Some text.</p></hovlet>\n"),
                            {});
        });
        all.add(corpus, "entries with the same key, MB", megabytes, [=] {
            return document({}, times(size / 40, "<hovlet key=\"attack\"><p>Some</p></hovlet>\n"),
                            {});
        });
        all.add(corpus, "UTF-16, MB", megabytes,
                [=] { return utf16(document({}, QByteArray(size / 2, 'x'), {})); });
        all.add(corpus, "comment before the root, MB", megabytes,
                [=] { return document("<!--" + QByteArray(size, 'x') + "-->", {}, {}); });
        all.add(corpus, "entry of text, MB", megabytes, [=] {
            return "<hovlets search=\"Default\"><hovlet key=\"attack\"><p>" + QByteArray(size, 'x')
                    + "</p></hovlet></hovlets>";
        });
        all.add(corpus, "lines, MB", megabytes, [=] { return QByteArray(size, '\n'); });
        all.add(corpus, "less-than, MB", megabytes, [=] { return QByteArray(size, '<'); });
        all.add(corpus, "quotes in a tag, MB", megabytes,
                [=] { return document({}, "<hovlet " + times(size / 4, "a=\"\"") + "/>", {}); });
    }
}

void addStructure(Documents &all)
{
    const char *corpus = "structure";
    for (const int size : { 300, 3000, 100000 }) {
        all.add(corpus, "namespaces of the root", size, [=] {
            return document({}, times(size, "<p/>"), numbered(size, " xmlns:a", "=\"u\""));
        });
        all.add(corpus, "attributes", size,
                [=] { return document({}, "<hovlet" + numbered(size, " a", "=\"\"") + "/>", {}); });
        all.add(corpus, "attributes of the entry", size, [=] {
            return "<hovlets search=\"Default\"><hovlet key=\"attack\""
                    + numbered(size, " a", "=\"\"") + "/></hovlets>";
        });
        all.add(corpus, "search", size, [=] {
            return "<hovlets search=\"" + times(size, "Default,none,")
                    + "\"><hovlet key=\"attack\">" + times(300, "<p>x</p><p image=\"x.png\"/>")
                    + "</hovlet></hovlets>";
        });
        all.add(corpus, "a name", size,
                [=] { return document({}, "<" + times(size, "x") + "/>", {}); });
        all.add(corpus, "end tags", size, [=] { return document({}, times(size, "</x>"), {}); });
        all.add(corpus, "bytes", size, [=] {
            QByteArray bytes = document({}, {}, {});
            quint32 state = 1;
            for (int i = 0; i < size; ++i) {
                state = state * 1664525 + 1013904223;
                bytes += char(state >> 24);
            }
            return bytes;
        });
    }
    const QByteArray plain = document({}, "<p>x</p>", {});
    for (const char *encoding : { "UTF-16", "UTF-32", "UTF-7", "EBCDIC", "UCS-4", "Shift_JIS" }) {
        all.add("encoding", encoding, 1, [=] {
            return "<?xml version=\"1.0\" encoding=\"" + QByteArray(encoding) + "\"?>" + plain;
        });
    }
    for (int c = 0; c < 32; ++c) {
        all.add("encoding", "control character", c, [=] {
            return document({},
                            "<p a=\"" + QByteArray(3, char(c)) + "\">" + QByteArray(3, char(c))
                                    + "</p>",
                            {});
        });
    }
}

} // namespace

QList<HostileInput> hostileDocuments()
{
    Documents all;
    addRecursion(all);
    addEntities(all);
    addSizes(all);
    addStructure(all);
    return all.inputs;
}
