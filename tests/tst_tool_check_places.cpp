// SPDX-License-Identifier: Apache-2.0
#include "PackageFolder.h"
#include "TestMain.h"
#include "ToolFindings.h"

#include <QtTest/QtTest>

/// To which line and column findings point.
class tst_ToolCheckPlaces : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldPointToWhatIsWrong_data();
    void shouldPointToWhatIsWrong();
};

void tst_ToolCheckPlaces::shouldPointToWhatIsWrong_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QStringList>("expected");
    const auto row = [](const char *name, const QByteArray &content, const QStringList &expected) {
        QTest::newRow(name) << content << expected;
    };
    row("behind a value with >",
        control("<hovlet key='a'\n title=\"File > Save\"\n shortcut='S'\n  clip='a.mp4'/>"),
        { QStringLiteral("HV301 A.xml:5:3") });
    row("behind its name in a value", control("<hovlet title=' clip=' key='a' clip = 'a.mp4'/>"),
        { QStringLiteral("HV301 A.xml:2:32") });
}

void tst_ToolCheckPlaces::shouldPointToWhatIsWrong()
{
    QFETCH(QByteArray, content);
    QFETCH(QStringList, expected);
    PackageFolder folder;
    folder.addControlFile(QStringLiteral("P"), QStringLiteral("A"), content);
    QCOMPARE(findingsOf(ToolRun(checkArguments("json", folder.path())), true), expected);
}

HOVLETS_TEST_MAIN(tst_ToolCheckPlaces)
#include "tst_tool_check_places.moc"
