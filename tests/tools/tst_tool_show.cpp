// SPDX-License-Identifier: Apache-2.0
#include "PackageFolder.h"
#include "TestMain.h"
#include "ToolRun.h"

#include <QtCore/QJsonArray>
#include <QtTest/QtTest>

class tst_ToolShow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void shouldReportTheLocaleThatAnswers_data();
    void shouldReportTheLocaleThatAnswers();
    void shouldShowWhatTheHostGets();
    void shouldFindNothingForAnUnknownKey();

private:
    ToolRun show(const QString &key, const QStringList &options = {}) const
    {
        return ToolRun(QStringList { QStringLiteral("show"), QStringLiteral("--format"),
                                     QStringLiteral("json"), key, m_folder->path() }
                       + options);
    }

    std::unique_ptr<PackageFolder> m_folder;
    QString m_german;
};

void tst_ToolShow::init()
{
    m_folder = std::make_unique<PackageFolder>();
    const QString package = QStringLiteral("P");
    m_folder->addControlFile(package, QStringLiteral("English"),
                             "<hovlets locale='en_US'><hovlet key='a' title='Pen'/>\n"
                             "<hovlet key='b' title='Line'/></hovlets>");
    m_german = m_folder->addControlFile(
            package, QStringLiteral("German"),
            "<hovlets locale='de_DE'>\n<p><hovlet key='a'/></p>\n<hovlet key='a' "
            "title='Stift'><p>Text</p></hovlet></hovlets>");
}

void tst_ToolShow::shouldReportTheLocaleThatAnswers_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("by");
    const QStringList german { QStringLiteral("--locale"), QStringLiteral("de_DE") };
    const QStringList other { QStringLiteral("--fallback-key"), QStringLiteral("b") };
    const QStringList fallback { QStringLiteral("--fallback-locale"), QStringLiteral("de_DE"),
                                 QStringLiteral("--locale"), QStringLiteral("fr_FR") };
    QTest::newRow("default") << "a" << QStringList() << "Pen"
                             << "locale";
    QTest::newRow("locale") << "a" << german << "Stift"
                            << "locale";
    QTest::newRow("fallback locale") << "b" << german << "Line"
                                     << "fallback locale";
    QTest::newRow("other fallback locale") << "a" << fallback << "Stift"
                                           << "fallback locale";
    QTest::newRow("fallback key") << "c" << other << "Line"
                                  << "fallback key";
}

void tst_ToolShow::shouldReportTheLocaleThatAnswers()
{
    QFETCH(QString, key);
    QFETCH(QStringList, options);
    QFETCH(QString, title);
    QFETCH(QString, by);
    const ToolRun run = show(key, options);
    QCOMPARE(run.error, QByteArray());
    QCOMPARE(run.status, 0);
    const QString xml = run.json().value(QLatin1String("xml")).toString();
    QVERIFY2(xml.contains(title), qPrintable(xml));
    QCOMPARE(run.json().value(QLatin1String("answeredBy")).toString(), by);
}

void tst_ToolShow::shouldShowWhatTheHostGets()
{
    const QString data = m_folder->add(QStringLiteral("keys.xml"),
                                       "<hovletkeys><key name='a' shortcut='F9'/></hovletkeys>");
    const QString extra =
            QFileInfo(m_folder->add(QStringLiteral("extra/Part.qml"), "Item {}")).path();
    const ToolRun run =
            show(QStringLiteral("a"),
                 { QStringLiteral("--locale"), QStringLiteral("de_DE"),
                   QStringLiteral("--key-data"), data, QStringLiteral("--extra-path"), extra });
    QCOMPARE(run.json().value(QLatin1String("file")).toString(), m_german);
    QCOMPARE(run.json().value(QLatin1String("line")).toInt(), 3);
    QCOMPARE(run.json().value(QLatin1String("componentPaths")).toArray(),
             (QJsonArray { m_folder->path() + QStringLiteral("/P.hovlets"), extra }));
    const QString xml = run.json().value(QLatin1String("xml")).toString();
    for (const char *part : { "F9", "Text", "HVPackagName" })
        QVERIFY2(xml.contains(QLatin1String(part)), qPrintable(xml));
}

void tst_ToolShow::shouldFindNothingForAnUnknownKey()
{
    const ToolRun run = show(QStringLiteral("nothing"));
    QCOMPARE(run.status, 1);
    QCOMPARE(run.output, QByteArray());
    QVERIFY2(run.error.contains("\"nothing\""), run.error.constData());
}

HOVLETS_TEST_MAIN(tst_ToolShow)
#include "tst_tool_show.moc"
