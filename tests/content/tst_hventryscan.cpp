// SPDX-License-Identifier: Apache-2.0
#include "ControlFileGenerator.h"
#include "DebugLog.h"
#include "HVContentTree.h"
#include "HVContext.h"
#include "HVEntryScan.h"
#include "HVIndex.h"
#include "HVXmlElement.h"
#include "PackageFolder.h"
#include "TestMain.h"
#include "WholeParse.h"

using namespace Hovlets;

namespace {

const QLocale english(QStringLiteral("en_US"));

/// Everything that a look-up returns, as text.
QString described(const HVXmlElement *entry, HVXmlElement *root)
{
    if (!entry)
        return QStringLiteral("nothing");
    QString text = root->toXml() + QLatin1Char('\n') + root->content();
    const QList<QObject *> elements = root->childElementList(QString());
    for (const QObject *object : elements) {
        const auto *element = qobject_cast<const HVXmlElement *>(object);
        text += QStringLiteral("\n%1 {").arg(element == entry ? QStringLiteral("entry") : QString())
                + element->getTagNameSpace() + QStringLiteral("} ") + element->content();
    }
    return text;
}

/// The result of a look-up that parses the whole file.
QString parsed(const QByteArray &file, const QString &key, const QString &path)
{
    const WholeParse parse(file, key);
    HVXmlElement *entry = parse.entry();
    const QString locale = entry ? parse.root()->attribute(QStringLiteral("locale")) : QString();
    if (!locale.isEmpty() && QLocale(locale) != english)
        entry = nullptr;
    if (entry) {
        entry->setAttribute(QStringLiteral("HVLocation"), path);
        entry->setAttribute(QStringLiteral("HVPackagName"), QString());
    }
    return described(entry, parse.root());
}

QString loaded(HVIndex &index, const QString &key, const QString &path)
{
    HVXmlElement *root = nullptr;
    HVXmlElement *entry = index.load(key, path, english, root);
    const HVContentTree tree(entry, root);
    return described(entry, root);
}

int rounds()
{
    bool given = false;
    const int number = qEnvironmentVariableIntValue("HOVLETS_SCAN_ROUNDS", &given);
    return given ? number : 3000;
}

} // namespace

class tst_HVEntryScan : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    /// HOVLETS_SCAN_SEED and HOVLETS_SCAN_ROUNDS set the first seed and the number of files.
    void shouldNeverChangeWhatALookUpFinds()
    {
        const PackageFolder folder;
        HVContext context;
        HVIndex index(&context, {});
        const QStringList keys = ControlFileGenerator::keys();
        const int first = qEnvironmentVariableIntValue("HOVLETS_SCAN_SEED");
        int found = 0;
        int refused = 0;
        for (int seed = first; seed < first + rounds(); ++seed) {
            ControlFileGenerator generator { quint32(seed) };
            const QByteArray file = generator.controlFile();
            const QString path = folder.add(QStringLiteral("a.xml"), file);
            QStringList asked { QStringLiteral("a"), QString() };
            for (int i = 0; i < 3; ++i)
                asked += keys.at((seed * 3 + i) % keys.size());
            for (const QString &key : std::as_const(asked)) {
                const DebugLog silence;
                const QString expected = parsed(file, key, path);
                const QString actual = loaded(index, key, path);
                if (actual != expected) {
                    QFAIL(qPrintable(
                            QStringLiteral("seed %1, key \"%2\" of the file\n%3\nfound %4\nnot %5")
                                    .arg(QString::number(seed),
                                         QString::fromLatin1(key.toUtf8().toPercentEncoding()),
                                         QString::fromLatin1(
                                                 file.toPercentEncoding(" <>=\"'/&;?![]-:#\n")),
                                         actual, expected)));
                }
                found += expected == QLatin1String("nothing") ? 0 : 1;
                refused += HVEntryScan(key).mayHold(file) ? 0 : 1;
            }
        }
        // The generated files are a useful test only if each of these cases occurs.
        QVERIFY2(found > rounds() / 4, qPrintable(QString::number(found)));
        QVERIFY2(refused > rounds() / 4, qPrintable(QString::number(refused)));
    }

    void shouldLeaveToTheParserWhatItCannotTell_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("key");
        const QString a = QStringLiteral("a");
        const auto row = [](const char *name, const QByteArray &file, const QString &key) {
            QTest::newRow(name) << file << key;
        };
        row("plain", "<hovlets><hovlet key=\"a\"/></hovlets>", a);
        row("single quotes", "<hovlets><hovlet key='a'/></hovlets>", a);
        row("white space", "<hovlets><hovlet\n\tkey\r\n=\t 'a' ></hovlet></hovlets>", a);
        row("not the first attribute", "<hovlets><hovlet x='>' y=\"'\" key='a'/></hovlets>", a);
        row("character reference", "<hovlets><hovlet key=\"&#97;\"/></hovlets>", a);
        row("entity", "<hovlets><hovlet key=\"&amp;\"/></hovlets>", QStringLiteral("&"));
        row("undefined entity", "<hovlets><hovlet key=\"a&no;\"/></hovlets>", a);
        row("document type",
            "<!DOCTYPE hovlets [<!ENTITY e '<hovlet key=\"b\"/>']><hovlets>&e;</hovlets>", a);
        row("tag from an entity",
            "<!DOCTYPE hovlets [<!ENTITY e '<hovlet k&#101;y=\"a\"/>']><hovlets>&e;</hovlets>", a);
        row("no key", "<hovlets><hovlet/></hovlets>", QString());
        row("no key, space", "<hovlets><hovlet ></hovlet></hovlets>", QString());
        row("no key, other attribute", "<hovlets><hovlet x=\"a\"/></hovlets>", QString());
        row("empty key", "<hovlets><hovlet key=\"\"/></hovlets>", QString());
        row("a root in a root", "<hovlets><hovlets/></hovlets>", a);
        row("entry as root", "<hovlet key=\"a\"><title/></hovlet>", a);
        row("ISO-8859-1",
            "<?xml version='1.0' encoding='ISO-8859-1'?><hovlets><hovlet key='\xe4'/></hovlets>",
            QStringLiteral("\u00e4"));
        row("encoding in odd spelling",
            "<?xml version='1.0' encoding = 'ISO-8859-1'?><hovlets><hovlet key='\xe4'/></hovlets>",
            QStringLiteral("\u00e4"));
        row("UTF-16", QByteArray("\xff\xfe<\0h\0o\0v\0l\0e\0t\0s\0/\0>\0", 22), a);
        row("UTF-16, no mark", QByteArray("\0<\0h\0o\0v\0l\0e\0t\0s\0/\0>", 20), a);
        row("broken UTF-8", "<hovlets><hovlet key=\"\xff\"/></hovlets>", QStringLiteral("\ufffd"));
        row("half a surrogate", "<hovlets><hovlet key=\"b\"/></hovlets>", QString(QChar(0xd800)));
        row("a mark in the key",
            "<hovlets><hovlet key=\"\xef\xbb\xbf"
            "a\"/></hovlets>",
            QStringLiteral("\ufeffa"));
        row("a tag in a value", "<hovlets><hovlet x=\"<hovlet key='a'/>\" key=\"b\"/></hovlets>",
            a);
    }

    void shouldLeaveToTheParserWhatItCannotTell()
    {
        QFETCH(QByteArray, file);
        QFETCH(QString, key);
        QVERIFY(HVEntryScan(key).mayHold(file));
        QVERIFY(HVEntryKeys(file).mayHold(HVEntryScan(key)));
    }

    void shouldRefusePlainFilesWithoutTheKey_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("key");
        const QString b = QStringLiteral("b");
        const QByteArray plain = "<hovlets locale=\"en_US\">\n  <hovlet key=\"a\" name='n'>\n"
                                 "    <title>b &amp; key=\"b\"</title></hovlet>\n</hovlets>\n";
        const auto row = [](const char *name, const QByteArray &file, const QString &key) {
            QTest::newRow(name) << file << key;
        };
        row("plain", plain, b);
        row("the empty key", plain, QString());
        row("case", plain, QStringLiteral("A"));
        row("part of a key", plain, QStringLiteral("a "));
        row("script of the key", plain, QStringLiteral("\u65e5\u672c"));
        row("declaration", "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + plain, b);
        row("declaration in small letters", "<?xml version='1.0' encoding='utf-8'?>" + plain, b);
        row("declaration without encoding", "<?xml version=\"1.0\"?>\r\n" + plain, b);
        row("mark", "\xef\xbb\xbf" + plain, b);
        row("comments", "<!-- all about b -->\n<?pi b?>\n" + plain, b);
        row("no entry", "<hovlets/>", b);
        row("no entry for the empty key", "<hovlets>text</hovlets>", QString());
        row("other attributes first", "<hovlets><hovlet name=\"b\" x:key='b' key=\"a\"/></hovlets>",
            b);
        row("references elsewhere",
            "<hovlets><hovlet name=\"&#98;\" key=\"a\">&#98;</hovlet></hovlets>", b);
        row("no key", "<hovlets><hovlet/><hovlet name='b'></hovlet></hovlets>", b);
        row("white space", "<hovlets><hovlet\n\tname\r\n=\t 'b' key = \"a\" /></hovlets>", b);
        row("other tags", "<hovlets><hovletx key=\"b\"/><title key=\"b\"/></hovlets>", b);
        row("cut", "<hovlets><hovlet", b);
        row("long", "<hovlets>" + QByteArray("<hovlet key=\"a\"/>").repeated(10000) + "</hovlets>",
            b);
    }

    void shouldRefusePlainFilesWithoutTheKey()
    {
        QFETCH(QByteArray, file);
        QFETCH(QString, key);
        QVERIFY(!HVEntryScan(key).mayHold(file));
        QVERIFY(!HVEntryKeys(file).mayHold(HVEntryScan(key)));
    }

    void shouldFindEachOfManyKeys()
    {
        constexpr int Entries = 20000;
        QByteArray file = "<hovlets>";
        for (int i = 0; i < Entries; ++i)
            file += "<hovlet key=\"" + QByteArray::number(i) + "\"/>";
        const HVEntryKeys keys(file + "</hovlets>");
        int others = 0; // keys that only have the hash of one of the file's
        for (int i = 0; i < Entries; i += 10) {
            const QString key = QString::number(i);
            QVERIFY2(keys.mayHold(HVEntryScan(key)), qPrintable(key));
            others += keys.mayHold(HVEntryScan(key + QLatin1Char('x'))) ? 1 : 0;
        }
        QVERIFY(others < 10);
    }
};

HOVLETS_TEST_MAIN(tst_HVEntryScan)
#include "tst_hventryscan.moc"
