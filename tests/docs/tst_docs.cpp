// SPDX-License-Identifier: Apache-2.0
#include "HVContext.h"
#include "HVIndex.h"
#include "HVView.h"
#include "HVWidget.h"
#include "HVXmlElement.h"
#include "HovletsQuickTypes.h"
#include "PackageFolder.h"
#include "RecordingHost.h"
#include "TestMain.h"
#include "Text.h"

#include <QtCore/QDir>
#include <QtCore/QJsonDocument>
#include <QtCore/QRegularExpression>
#include <QtCore/QTranslator>
#include <QtCore/QXmlStreamReader>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>

#include <memory>

using namespace Hovlets;

// Tests the examples of the documentation; see README.md in the folder docs beside this file.

namespace {

const QDir Blocks(QStringLiteral(HOVLETS_DOC_BLOCKS));

struct Block
{
    QString file, document, language, word;
    QString text() const { return readText(Blocks.filePath(file)); }
};

QList<Block> allBlocks()
{
    QList<Block> blocks;
    const QStringList lines =
            readText(Blocks.filePath(QStringLiteral("manifest"))).split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        const QStringList words = line.split(QLatin1Char(' '));
        if (words.size() == 6)
            blocks.append({ words.at(0), words.at(1), words.at(3), words.at(4) });
    }
    return blocks;
}

/// Adds a row for each block in one language.
void addRows(const QString &language)
{
    QTest::addColumn<QString>("word");
    QTest::addColumn<QString>("text");
    int rows = 0;
    const QList<Block> blocks = allBlocks();
    for (const Block &block : blocks) {
        if (block.language != language)
            continue;
        QTest::newRow(qPrintable(block.file)) << block.word << block.text();
        ++rows;
    }
    QVERIFY(rows > 0);
}

bool isWellFormed(const QString &xml)
{
    QXmlStreamReader reader(xml);
    while (!reader.atEnd())
        reader.readNext();
    return !reader.hasError();
}

/// The values of an attribute in every element named \a tag, or an empty list for malformed text.
QStringList attributesOf(const QString &xml, const QString &tag, const QString &attribute)
{
    QStringList values;
    QXmlStreamReader reader(xml);
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::StartElement && reader.name() == tag
            && reader.attributes().hasAttribute(attribute))
            values.append(reader.attributes().value(attribute).toString());
    }
    return reader.hasError() ? QStringList() : values;
}

QString rootOf(const QString &xml)
{
    QXmlStreamReader reader(xml);
    return reader.readNextStartElement() ? reader.name().toString() : QString();
}

/// A complete control file around the excerpt that a block shows.
QString controlFile(const QString &word, const QString &text)
{
    if (word == QLatin1String("children")) {
        return controlFile(QStringLiteral("entry"),
                           QStringLiteral("<hovlet key=\"key\">") + text
                                   + QStringLiteral("</hovlet>"));
    }
    if (word == QLatin1String("entry"))
        return QStringLiteral("<hovlets search=\"Default\">\n") + text
                + QStringLiteral("</hovlets>");
    return text;
}

std::unique_ptr<RecordingHost> hostOf(const PackageFolder &folder, HVContext settings)
{
    settings.set(HVKeyMessageLevel, HVMessageDebug);
    settings.set(HVKeyHideFadeDuration, 0);
    return std::make_unique<RecordingHost>(
            settings, QStringList { QStringLiteral(HOVLETS_PACKAGES), folder.path() });
}

/// Messages of QML and about missing files, except for resources and addresses.
QStringList complaints(const RecordingHost &host)
{
    return host.messagesOf(HVMessageDebug);
}

} // namespace

class tst_Docs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldHaveARuleForEveryBlock();
    void shouldShowXmlThatTheLibraryReads_data() { addRows(QStringLiteral("xml")); }
    void shouldShowXmlThatTheLibraryReads();
    void shouldShowQmlThatRuns_data() { addRows(QStringLiteral("qml")); }
    void shouldShowQmlThatRuns();
    void shouldShowJsonThatCanBeParsed_data() { addRows(QStringLiteral("json")); }
    void shouldShowJsonThatCanBeParsed();

private:
    void checkControlFile(const QString &text, bool serves);
    void checkKeyData(const QString &text);
    void checkTranslation(const QString &text);
    static void checkProgram(const QString &text);
};

void tst_Docs::shouldHaveARuleForEveryBlock()
{
    const QHash<QString, QStringList> rules {
        { QStringLiteral("cpp"),
          { QStringLiteral("-"), QStringLiteral("body"), QStringLiteral("class") } },
        { QStringLiteral("xml"),
          { QStringLiteral("-"), QStringLiteral("entry"), QStringLiteral("children"),
            QStringLiteral("broken") } },
        { QStringLiteral("qml"),
          { QStringLiteral("-"), QStringLiteral("part"), QStringLiteral("program") } },
        { QStringLiteral("json"), { QStringLiteral("-") } },
        { QStringLiteral("cmake"), { QStringLiteral("-") } },
        { QStringLiteral("python"), { QStringLiteral("-") } },
        { QStringLiteral("sh"), { QStringLiteral("-") } },
        { QStringLiteral("text"), { QStringLiteral("-") } },
    };
    const QList<Block> blocks = allBlocks();
    QVERIFY(blocks.size() > 10);
    for (const Block &block : blocks) {
        QVERIFY2(rules.value(block.language).contains(block.word),
                 qPrintable(QStringLiteral("%1: no rule for “%2 %3”")
                                    .arg(block.file, block.language, block.word)));
    }
}

void tst_Docs::checkControlFile(const QString &text, bool serves)
{
    PackageFolder folder;
    folder.addControlFile(QStringLiteral("Doc"), QStringLiteral("doc"), text.toUtf8());
    HVContext settings;
    const QStringList locales =
            attributesOf(text, QStringLiteral("hovlets"), QStringLiteral("locale"));
    if (!locales.isEmpty())
        settings.set(HVKeyLocale, locales.first());
    const auto host = hostOf(folder, settings);
    if (!serves) {
        auto keys = QRegularExpression(QStringLiteral("<hovlet [^>]*key=\"([^\"]*)\""))
                            .globalMatch(text);
        QVERIFY(keys.hasNext());
        while (keys.hasNext()) {
            const QString key = keys.next().captured(1);
            QVERIFY2(!host->manager()->show(key, QPoint(), nullptr), qPrintable(key));
        }
        return;
    }
    const QStringList keys = attributesOf(text, QStringLiteral("hovlet"), QStringLiteral("key"));
    if (keys.isEmpty()) { // such a file only registers its package
        QVERIFY(rootOf(text) == QLatin1String("hovlets"));
        return;
    }
    // Without a user interface, the file does not show how an entry looks.
    const bool hasInterface =
            !attributesOf(text, QStringLiteral("hovlets"), QStringLiteral("search")).isEmpty();
    for (const QString &key : keys) {
        QVERIFY2(host->manager()->show(key, QPoint(), nullptr), qPrintable(key));
        QCOMPARE(host->view()->content()->attribute(QStringLiteral("key")), key);
        if (hasInterface)
            QCOMPARE(complaints(*host), QStringList());
    }
}

void tst_Docs::checkKeyData(const QString &text)
{
    PackageFolder folder;
    HVContext settings;
    settings.set(HVKeyKeyDataFile, folder.add(QStringLiteral("keys.xml"), text.toUtf8()));
    HVIndex index(&settings, {});
    const QStringList keys = attributesOf(text, QStringLiteral("key"), QStringLiteral("name"));
    QVERIFY(!keys.isEmpty());
    for (const QString &key : keys) {
        HVXmlElement element;
        index.loadKeyData(key, QString(), &element);
        QVERIFY2(!element.attributeNames().isEmpty(), qPrintable(key));
    }
}

void tst_Docs::checkTranslation(const QString &text)
{
    PackageFolder folder;
    const QString source = folder.add(QStringLiteral("doc.ts"), text.toUtf8());
    const QString lrelease = QStringLiteral(HOVLETS_LRELEASE);
    QVERIFY2(!lrelease.isEmpty(), "lrelease is not installed; ./run test installs it");
    const QString compiled = folder.path() + QStringLiteral("/doc.qm");
    QCOMPARE(QProcess::execute(
                     lrelease,
                     { QStringLiteral("-silent"), source, QStringLiteral("-qm"), compiled }),
             0);
    QTranslator translator;
    QVERIFY(translator.load(compiled));
    const auto one = [&](const char *tag) {
        return QRegularExpression(QStringLiteral("<%1>([^<]*)<").arg(QLatin1String(tag)))
                .match(text)
                .captured(1);
    };
    QCOMPARE(translator.translate(qPrintable(one("name")), qPrintable(one("source"))),
             one("translation"));
}

void tst_Docs::shouldShowXmlThatTheLibraryReads()
{
    QFETCH(QString, word);
    QFETCH(QString, text);
    const QString file = controlFile(word, text);
    if (word == QLatin1String("broken"))
        return checkControlFile(file, false);
    QVERIFY(isWellFormed(file));
    const QString root = rootOf(file);
    if (root == QLatin1String("hovletkeys"))
        checkKeyData(file);
    else if (root == QLatin1String("TS"))
        checkTranslation(file);
    else
        checkControlFile(file, true);
}

void tst_Docs::shouldShowQmlThatRuns()
{
    QFETCH(QString, word);
    QFETCH(QString, text);
    if (word == QLatin1String("program"))
        return checkProgram(text);
    if (word == QLatin1String("part")) {
        text = QStringLiteral("import QtQuick 2.15\nimport QtQuick.Window 2.15\nimport "
                              "com.zandor.hovlets.qml 1.0\n"
                              "Item {\n    width: 300\n    height: 200\n")
                + text + QLatin1Char('}');
    }
    PackageFolder folder;
    folder.addControlFile(
            QStringLiteral("Doc"), QStringLiteral("doc"),
            "<hovlets>\n<hovlet key=\"pen\" title=\"Pen\" shortcut=\"P\"><p>Draws a line.</p>"
            "<p>Colours.</p></hovlet>\n<hovlet key=\"other\"/>\n</hovlets>");
    folder.add(QStringLiteral("Doc.hovlets/ui/HovletsUI.qml"), text.toUtf8());
    const auto host = hostOf(folder, HVContext());
    // The second content replaces the first while the same QML runs.
    for (const char *key : { "pen", "other" }) {
        QVERIFY(host->manager()->show(QLatin1String(key), QPoint(), nullptr));
        QQuickItem *root = host->view()->rootObject();
        QVERIFY2(root, qPrintable(complaints(*host).join(QLatin1Char('\n'))));
        QVERIFY(root->width() > 0 && root->height() > 0);
        QVERIFY(!host->view()->grabFramebuffer().isNull());
        QCOMPARE(complaints(*host), QStringList());
    }
    host->popup()->hideAnimated();
    QCOMPARE(complaints(*host), QStringList());
}

void tst_Docs::checkProgram(const QString &text)
{
    registerQuickTypes("Hovlets");
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData(text.toUtf8(), QUrl());
    const std::unique_ptr<QObject> root(component.create());
    QVERIFY2(root, qPrintable(component.errorString()));
}

void tst_Docs::shouldShowJsonThatCanBeParsed()
{
    QFETCH(QString, text);
    QJsonParseError error;
    QJsonDocument::fromJson(text.toUtf8(), &error);
    QVERIFY2(error.error == QJsonParseError::NoError, qPrintable(error.errorString()));
}

HOVLETS_TEST_MAIN(tst_Docs)
#include "tst_docs.moc"
