// SPDX-License-Identifier: Apache-2.0
#include "OtherUser.h"
#include "PackageFolder.h"
#include "TestMain.h"
#include "ToolFindings.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtTest/QtTest>

#include <sys/stat.h>

#include <memory>

namespace {

const QString Package = QStringLiteral("P");

/// Omits the packages that come with the library, which a copy of the program cannot find.
QByteArray ownContent()
{
    return "<hovlets >\n<hovlet key='a'/></hovlets>";
}

} // namespace

/// Tests files in a package that are not read, and the reasons given.
class tst_ToolCheckFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void shouldAcceptAPackageByAnyPath_data();
    void shouldAcceptAPackageByAnyPath();
    void shouldReadNothingOutsideTheFile();
    void shouldReportTheTagThatIsTakenForTheRoot_data();
    void shouldReportTheTagThatIsTakenForTheRoot();
    void shouldOpenOrdinaryFilesOnly();
    void shouldReadOnlyTheBeginningOfLargeFiles();
    void shouldReportFilesThatCannotBeRead_data();
    void shouldReportFilesThatCannotBeRead();
    void shouldReportALinkedControlFolder_data();
    void shouldReportALinkedControlFolder();

private:
    QString path(const QString &relative) const { return m_folder->path() + relative; }

    std::unique_ptr<PackageFolder> m_folder;
    QStringList m_closed;
};

void tst_ToolCheckFiles::init()
{
    m_folder = std::make_unique<PackageFolder>();
    m_folder->addControlFile(Package, QStringLiteral("Good"), control("<hovlet key='good'/>"));
}

void tst_ToolCheckFiles::cleanup()
{
    for (const QString &closed : std::as_const(m_closed))
        QFile::setPermissions(closed, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    m_closed.clear();
    m_folder.reset();
}

void tst_ToolCheckFiles::shouldAcceptAPackageByAnyPath_data()
{
    QTest::addColumn<QStringList>("paths");
    const auto row = [](const char *name, const QStringList &paths) {
        QTest::newRow(name) << paths;
    };
    row("slash", { QStringLiteral("/P.hovlets/") });
    row("slashes", { QStringLiteral("/P.hovlets//") });
    row("dot", { QStringLiteral("/P.hovlets/.") });
    row("beside another", { QStringLiteral("/P.hovlets/"), QStringLiteral("/other/") });
}

void tst_ToolCheckFiles::shouldAcceptAPackageByAnyPath()
{
    QFETCH(QStringList, paths);
    m_folder->add(QStringLiteral("other/Q.hovlets/Control/Q.xml"), control("<hovlet key='b'/>"));
    QStringList more;
    for (const QString &relative : std::as_const(paths))
        more += path(relative);
    QCOMPARE(found(more.mid(1), more.first()), QStringList());
}

void tst_ToolCheckFiles::shouldReadNothingOutsideTheFile()
{
    const QString canary = m_folder->add(QStringLiteral("canary.xml"), "<other/>");
    const QByteArray type =
            "<!DOCTYPE hovlets [<!ENTITY e SYSTEM \"file://" + canary.toUtf8() + "\">]>\n";
    m_folder->addControlFile(
            Package, QStringLiteral("A"),
            type + control("<hovlet key='a'/>&e;<hovlet key='b'><p>&e;</p></hovlet>"));
    QCOMPARE(found({}, m_folder->path()), QStringList());
}

void tst_ToolCheckFiles::shouldReportTheTagThatIsTakenForTheRoot_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QString>("expected");
    QTest::newRow("comment") << QByteArray("<!-- see <pen> -->\n") << "HV118 A.xml:1:10";
    QTest::newRow("comment before it in its line")
            << QByteArray("<!-- <pen> -->") << "HV118 A.xml:1:6";
    QTest::newRow("later line") << QByteArray("<?xml version='1.0'?>\n<!--\n\xc3\xa4 <b/>\n-->")
                                << "HV118 A.xml:3:3";
    QTest::newRow("entity") << QByteArray("<!DOCTYPE hovlets [\n<!ENTITY e '<em>x</em>'>]>\n")
                            << "HV118 A.xml:2:13";
    const QByteArray longLine = "<!--" + QByteArray(1013, 'x') + "-->";
    QTest::newRow("line too long") << longLine << "HV114 A.xml:1:1021";
}

void tst_ToolCheckFiles::shouldReportTheTagThatIsTakenForTheRoot()
{
    QFETCH(QByteArray, before);
    QFETCH(QString, expected);
    m_folder->addControlFile(Package, QStringLiteral("A"), before + control("<hovlet key='a'/>"));
    QCOMPARE(findingsOf(ToolRun(checkArguments("json", m_folder->path())), true),
             QStringList { expected });
}

void tst_ToolCheckFiles::shouldOpenOrdinaryFilesOnly()
{
    for (const char *name : { "Pipe.xml", "pipe", "../Pipe.xml" }) {
        const QString pipe = path(QStringLiteral("/P.hovlets/Control/") + QLatin1String(name));
        QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0644), 0);
    }
    QCOMPARE(found({}, m_folder->path()), QStringList { QStringLiteral("HV113 Pipe.xml:1") });
}

/// Tests files of 3 GB that take up no space on disk.
void tst_ToolCheckFiles::shouldReadOnlyTheBeginningOfLargeFiles()
{
    for (const char *name : { "notes.bin", "A.txt" }) {
        QFile file(path(QStringLiteral("/P.hovlets/Control/") + QLatin1String(name)));
        QVERIFY(file.open(QIODevice::WriteOnly));
        if (file.fileName().endsWith(QLatin1String(".txt")))
            file.write(control("<hovlet key='a'/>"));
        QVERIFY(file.resize(qint64 { 3 } << 30));
    }
    // A sanitizer reserves more than that for itself; there, the test only shows that the run ends.
    const QString limit = QStringLiteral(HOVLETS_SANITIZED).isEmpty()
            ? QStringLiteral("ulimit -v 2000000 && ")
            : QString();
    const QStringList limited { QStringLiteral("sh"), QStringLiteral("-c"),
                                limit + QStringLiteral("exec \"$0\" \"$@\""),
                                QStringLiteral(HOVLETS_PROGRAM) };
    QCOMPARE(findingsOf(ToolRun(checkArguments("json", m_folder->path()), {}, limited)),
             QStringList { QStringLiteral("HV111 A.txt:1") });
}

void tst_ToolCheckFiles::shouldReportFilesThatCannotBeRead_data()
{
    QTest::addColumn<QString>("closed");
    QTest::addColumn<bool>("listable");
    QTest::addColumn<QString>("expected");
    QTest::newRow("control file") << "/Q.hovlets/Control/A.xml" << false << "HV116 A.xml:1";
    QTest::newRow("control folder") << "/Q.hovlets/Control" << false << "HV116 Control:1";
    QTest::newRow("control folder that can be listed")
            << "/Q.hovlets/Control" << true << "HV116 Control:1";
    QTest::newRow("resources") << "/Q.hovlets/Resources" << false << "HV116 Resources:1";
    QTest::newRow("package") << "/Q.hovlets" << false << "HV116 Q.hovlets:1";
    QTest::newRow("package that can be listed") << "/Q.hovlets" << true << "HV116 Q.hovlets:1";
}

void tst_ToolCheckFiles::shouldReportFilesThatCannotBeRead()
{
    QFETCH(QString, closed);
    QFETCH(bool, listable);
    QFETCH(QString, expected);
    PackageFolder folder;
    OtherUser user;
    folder.addPackage(Package, { QStringLiteral("good") });
    folder.addPackage(QStringLiteral("Q"), { QStringLiteral("other") });
    folder.addControlFile(QStringLiteral("Q"), QStringLiteral("A"), ownContent());
    folder.add(QStringLiteral("Q.hovlets/Resources/a.txt"), "text");
    user.admitTo(folder.path());
    if (!user.lack().isNull())
        QSKIP(qPrintable(user.lack()));
    const ToolRun open(checkArguments("json", folder.path()), {}, user.command());
    QCOMPARE(findingsOf(open), QStringList());
    m_closed += folder.path() + closed;
    QVERIFY(QFile::setPermissions(m_closed.last(),
                                  listable ? QFile::ReadOwner | QFile::ReadOther
                                           : QFile::Permissions()));
    const ToolRun run(checkArguments("json", folder.path()), {}, user.command());
    cleanup();
    QCOMPARE(findingsOf(run), QStringList { expected });
}

void tst_ToolCheckFiles::shouldReportALinkedControlFolder_data()
{
    QTest::addColumn<QString>("target");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("out of the package")
            << "/elsewhere" << QStringList { QStringLiteral("HV113 Control:1") };
    QTest::newRow("to where the name only begins with the package's")
            << "/Q.hovlets2" << QStringList { QStringLiteral("HV113 Control:1") };
    QTest::newRow("nowhere") << "/nowhere" << QStringList { QStringLiteral("HV113 Control:1") };
    QTest::newRow("within the package") << "/Q.hovlets/inside" << QStringList();
}

void tst_ToolCheckFiles::shouldReportALinkedControlFolder()
{
    QFETCH(QString, target);
    QFETCH(QStringList, expected);
    for (const char *folder : { "elsewhere", "Q.hovlets2", "Q.hovlets/inside" })
        m_folder->add(QLatin1String(folder) + QStringLiteral("/A.xml"),
                      control("<hovlet key='a'/>"));
    QVERIFY(QFile::link(path(target), path(QStringLiteral("/Q.hovlets/Control"))));
    if (!expected.isEmpty())
        QVERIFY(QDir(path(QStringLiteral("/Q.hovlets/inside"))).removeRecursively());
    QCOMPARE(found({}, m_folder->path()), expected);
    const ToolRun list({ QStringLiteral("list"), m_folder->path() });
    QCOMPARE(list.output.contains("/A.xml"), expected.isEmpty());
}

HOVLETS_TEST_MAIN(tst_ToolCheckFiles)
#include "tst_tool_check_files.moc"
