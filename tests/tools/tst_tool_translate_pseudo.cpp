// SPDX-License-Identifier: Apache-2.0
#include "TranslateBench.h"

/// Tests the translation that shows what cannot be translated.
class tst_ToolTranslatePseudo : public QObject, private TranslateBench
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { skipWithoutLinguist(); }
    void init() { reset(); }
    void shouldShowAPseudoTranslation();
    void shouldKeepMarkupInAPseudoTranslation();
    void shouldNotReplaceARealTranslation();
    void shouldReplaceItsPseudoTranslation();
};

void tst_ToolTranslatePseudo::shouldShowAPseudoTranslation()
{
    const ToolRun made = run({ text("pseudo"), text("--expansion"), text("100") });
    QCOMPARE(made.error, QByteArray());
    QCOMPARE(QString::fromUtf8(made.output), file("Hovlets_en_ZW.qm") + QLatin1Char('\n'));
    showIn("en_ZW");
    QCOMPARE(m_bench->texts("title"), QStringList { QString::fromUtf8("[Þéñ ~~~]") });
    QCOMPARE(m_bench->texts("link"), QStringList { QString::fromUtf8("[Ṁöŕé ~~~~]") });
}

void tst_ToolTranslatePseudo::shouldKeepMarkupInAPseudoTranslation()
{
    make(DefaultUiBench::entry("title=\"%(name)s x\"", "<p><![CDATA[<b>a</b> &lt; c]]></p>"));
    QCOMPARE(run({ text("pseudo"), text("--locale"), text("nl"), text("--expansion"), text("0") })
                     .status,
             0);
    m_bench->host.manager()->setGlobalProperty(text("name"), text("ink"));
    showIn("nl");
    QCOMPARE(m_bench->texts("title"), QStringList { QString::fromUtf8("[ink ẋ]") });
    QCOMPARE(m_bench->texts("paragraph"), QStringList { QString::fromUtf8("[<b>å</b> &lt; ç]") });
}

void tst_ToolTranslatePseudo::shouldNotReplaceARealTranslation()
{
    QCOMPARE(extractGerman().status, 0);
    translateAndRelease(text("Close"), text("Zu"));
    QVERIFY(QFile::remove(file("Hovlets_de_DE.ts")));
    const QByteArray released = readText(file("Hovlets_de_DE.qm")).toLatin1();
    const ToolRun refused = run({ text("pseudo"), text("--locale"), text("de_DE") });
    QCOMPARE(QString::fromUtf8(refused.error),
             QStringLiteral("hovlets: %1 is a real translation; choose another --locale\n")
                     .arg(file("Hovlets_de_DE.qm")));
    QCOMPARE(refused.status, 2);
    QCOMPARE(readText(file("Hovlets_de_DE.qm")).toLatin1(), released);
}

void tst_ToolTranslatePseudo::shouldReplaceItsPseudoTranslation()
{
    QCOMPARE(run({ text("pseudo"), text("--expansion"), text("0") }).status, 0);
    const ToolRun again = run({ text("pseudo"), text("--expansion"), text("100") });
    QCOMPARE(again.error, QByteArray());
    showIn("en_ZW");
    QCOMPARE(m_bench->texts("title"), QStringList { QString::fromUtf8("[Þéñ ~~~]") });
}

HOVLETS_TEST_MAIN(tst_ToolTranslatePseudo)
#include "tst_tool_translate_pseudo.moc"
