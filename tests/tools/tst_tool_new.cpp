// SPDX-License-Identifier: Apache-2.0
#include "PackageFolder.h"
#include "TestMain.h"
#include "ToolRun.h"

#include <QtCore/QDir>
#include <QtTest/QtTest>

class tst_ToolNew : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldMakeAPackageWithoutFindings();
    void shouldAcceptARelativeFolder();
    void shouldAcceptANameWithTheSuffix();
    void shouldOverwriteNothing();
    void shouldRefuseInvalidPackageNames_data();
    void shouldRefuseInvalidPackageNames();
};

void tst_ToolNew::shouldMakeAPackageWithoutFindings()
{
    PackageFolder folder;
    const QString path = folder.path() + QStringLiteral("/deep/packages");
    const ToolRun run({ QStringLiteral("new"), QStringLiteral("My.Help"), path });
    QCOMPARE(run.error, QByteArray());
    QCOMPARE(run.status, 0);

    const ToolRun check({ QStringLiteral("check"), path });
    QCOMPARE(check.output, QByteArray());
    QCOMPARE(check.status, 0);
    const ToolRun show({ QStringLiteral("show"), QStringLiteral("My.Help"), path });
    QCOMPARE(show.status, 0);
    QVERIFY2(show.output.contains("Default.hovlets") || show.output.contains("hovlets/packages"),
             show.output.constData());
}

void tst_ToolNew::shouldAcceptARelativeFolder()
{
    const PackageFolder folder;
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(folder.path()));
    const ToolRun run(
            { QStringLiteral("new"), QStringLiteral("Help"), QStringLiteral("my/packages") });
    QVERIFY(QDir::setCurrent(before));
    QCOMPARE(run.error, QByteArray());
    QCOMPARE(run.output, QByteArray("my/packages/Help.hovlets\n"));
    QVERIFY(QFile::exists(folder.path()
                          + QStringLiteral("/my/packages/Help.hovlets/Control/Help.xml")));
}

void tst_ToolNew::shouldAcceptANameWithTheSuffix()
{
    const PackageFolder folder;
    const ToolRun run({ QStringLiteral("new"), QStringLiteral("Help.hovlets"), folder.path() });
    QCOMPARE(run.status, 0);
    const QString package = folder.path() + QStringLiteral("/Help.hovlets");
    QCOMPARE(run.output, package.toUtf8() + '\n');
    QVERIFY(QFile::exists(package + QStringLiteral("/Control/Help.xml")));
}

void tst_ToolNew::shouldOverwriteNothing()
{
    PackageFolder folder;
    const QString file =
            folder.addControlFile(QStringLiteral("Help"), QStringLiteral("Help"), "mine");
    const ToolRun run({ QStringLiteral("new"), QStringLiteral("Help"), folder.path() });
    QCOMPARE(run.status, 2);
    QVERIFY2(run.error.contains("Help.hovlets already exists"), run.error.constData());
    QFile kept(file);
    QVERIFY(kept.open(QIODevice::ReadOnly));
    QCOMPARE(kept.readAll(), QByteArray("mine"));
    QCOMPARE(QDir(folder.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
             QStringList { QStringLiteral("Help.hovlets") });
}

void tst_ToolNew::shouldRefuseInvalidPackageNames_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : { "a/b", "a b", ".a", "a&b", "", ".hovlets" })
        QTest::newRow(name) << QString::fromUtf8(name);
}

void tst_ToolNew::shouldRefuseInvalidPackageNames()
{
    QFETCH(QString, name);
    PackageFolder folder;
    const ToolRun run({ QStringLiteral("new"), name, folder.path() });
    QCOMPARE(run.status, 2);
    const QByteArray words = '"' + name.toUtf8() + "\" is not a valid package name";
    QVERIFY2(run.error.contains(words), run.error.constData());
    QVERIFY(QDir(folder.path()).isEmpty());
}

HOVLETS_TEST_MAIN(tst_ToolNew)
#include "tst_tool_new.moc"
