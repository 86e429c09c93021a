// SPDX-License-Identifier: Apache-2.0
#include "DebugLog.h"
#include "HVLogging.h"
#include "HVVideoSourceFFMPEG.h"
#include "TestMain.h"
#include "XmlReading.h"

#include <QtCore/QUrl>

using namespace Hovlets;

namespace {

/// The debug output after reading a document that is not well-formed.
void parseBadDocument()
{
    HVXmlParser parser;
    read(parser, "<hovlets><hovlet></hovlets>");
}

} // namespace

class tst_HVLogging : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QLoggingCategory::setFilterRules(QString()); }

    void shouldLogContentUnderItsCategory()
    {
        DebugLog log;
        parseBadDocument();
        QCOMPARE(log.fatalErrors(), 1);
        QCOMPARE(log.categories(), QStringList(QStringLiteral("hovlets.content")));
    }

    void shouldLogClipsUnderTheirCategory()
    {
        DebugLog log;
        HVVideoSourceFFMPEG source;
        source.setSource(QUrl::fromLocalFile(QStringLiteral("/nowhere.mp4")));
        source.start();
        QTRY_COMPARE(log.lines(),
                     QStringList(QStringLiteral("Could not open media at: /nowhere.mp4")));
        source.quit();
        QCOMPARE(log.categories(), QStringList(QStringLiteral("hovlets.video")));
    }

    void shouldBeSilencedByTheHost()
    {
        QLoggingCategory::setFilterRules(QStringLiteral("hovlets.content=false"));
        DebugLog log;
        parseBadDocument();
        QCOMPARE(log.lines(), QStringList());
        QVERIFY(videoLog().isDebugEnabled());
    }
};

HOVLETS_TEST_MAIN(tst_HVLogging)
#include "tst_hvlogging.moc"
