// SPDX-License-Identifier: Apache-2.0
#include "HVIndex.h"
#include "PackageFolder.h"
#include "RecordingHost.h"
#include "TestMain.h"
#include "Text.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtCore/QScopeGuard>

#ifdef Q_OS_UNIX
#    include <unistd.h>
#endif

using namespace Hovlets;

namespace {

/// Records the calls.
class RecordingIndex : public HVIndex
{
    Q_OBJECT

public:
    RecordingIndex()
        : HVIndex(nullptr, {})
    {
    }

    bool open() override
    {
        notes += text("open");
        return false;
    }

    void indexControlFile(const QString &file, const QString &location) override
    {
        notes += file + QLatin1Char(' ') + location;
        QThread::msleep(work);
        HVIndex::indexControlFile(file, location);
    }

    QStringList notes;
    unsigned long work = 0; // ms for each file
};

} // namespace

/// Tests how packages and their control files are found.
class tst_HVManagerLoading : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_context = std::make_unique<HVContext>();
        m_context->set(HVKeyMessageLevel, HVMessageInformation);
        m_packages = std::make_unique<PackageFolder>();
    }

    void shouldOpenAGivenIndexBeforeItIsFilled()
    {
        m_packages->addPackage(text("P"), { text("a") });
        RecordingIndex index;
        {
            RecordingHost host(*m_context, { m_packages->path() }, &index);
            const QString package = m_packages->path() + text("/P.hovlets");
            QCOMPARE(index.notes,
                     (QStringList { text("open"),
                                    package + text("/Control/content.xml ") + package }));
        }
        QCOMPARE(index.keys(), QStringList { text("a") }); // the host still owns it
    }

    void shouldAnnounceItsProgress()
    {
        m_packages->addPackage(text("P"), { text("a") });
        const QString path = m_packages->path();
        RecordingHost host(*m_context, { path });
        const QStringList messages = host.messagesOf(HVMessageInformation);
        QCOMPARE(messages.size(), host.messages.size());
        QCOMPARE(messages.mid(0, 4),
                 (QStringList {
                         text("indexing packages (*.hovlets) in %1 ").arg(path),
                         text("indexing control files in %1/P.hovlets").arg(path),
                         text("looking for control files in :%1/P.hovlets/Control").arg(path),
                         text("found control file :%1/P.hovlets/Control/content.xml").arg(path) }));
        QCOMPARE(messages.size(), 5);
        const QRegularExpression time(text("^Indexed packages in (\\d+(\\.\\d+)?) seconds$"));
        const QRegularExpressionMatch match = time.match(messages.constLast());
        QVERIFY2(match.hasMatch(), qPrintable(messages.constLast()));
        QVERIFY(match.captured(1).toDouble() < 60);
    }

    void shouldReportTheTimeInSeconds()
    {
        m_packages->addPackage(text("P"), { text("a") });
        RecordingIndex index;
        index.work = 20;
        RecordingHost host(*m_context, { m_packages->path() }, &index);
        const QString told = host.messagesOf(HVMessageInformation).constLast();
        const double time = told.section(QLatin1Char(' '), 3, 3).toDouble();
        QVERIFY2(time >= 0.02 && time < 20, qPrintable(told));
    }

    void shouldReportTheTimeEvenWithoutContent()
    {
        RecordingHost host(*m_context, { text("/no/such/folder") });
        QCOMPARE(host.messages.size(), 1);
        QVERIFY(host.messages.at(0).second.startsWith(text("Indexed packages in 0")));
        QVERIFY(host.manager()->keys().isEmpty());
    }

    void shouldShowNoProgressByDefault()
    {
        m_packages->addPackage(text("P"), { text("a") });
        HVContext defaults;
        RecordingHost host(defaults, { m_packages->path() });
        QVERIFY(host.messages.isEmpty());
    }

    void shouldFindPackagesByTheirSuffix_data()
    {
        QTest::addColumn<QVariant>("suffix");
        QTest::addColumn<QString>("filter");
        QTest::addColumn<QStringList>("keys");
        QTest::newRow("default") << QVariant() << "*.hovlets" << QStringList { text("x") };
        QTest::newRow("another") << QVariant(text("pkg")) << "*.pkg" << QStringList { text("p") };
    }

    void shouldFindPackagesByTheirSuffix()
    {
        QFETCH(QVariant, suffix);
        QFETCH(QString, filter);
        const auto control = [](const char *key) {
            return QByteArray("<hovlets><hovlet key=\"") + key + "\"/></hovlets>";
        };
        m_packages->add(text("x.hovlets/Control/c.xml"), control("x"));
        m_packages->add(text("x/Control/c.xml"), control("plain"));
        m_packages->add(text("p.pkg/Control/c.xml"), control("p"));
        m_packages->add(text("deep/z.hovlets/Control/c.xml"), control("deep"));
        m_packages->add(text("y.hovlets2/Control/c.xml"), control("longer"));
        m_packages->add(text("f.hovlets.txt"), control("file"));
        m_packages->add(text("y.pkg.hovlets.d"), control("file"));
        PackageFolder other;
        other.add(text("l.hovlets/Control/c.xml"), control("link"));
        QVERIFY(QFile::link(other.path() + text("/l.hovlets"),
                            m_packages->path() + text("/l.hovlets")));
        m_packages->add(text("y.hovlets"), control("file"));
        if (suffix.isValid())
            m_context->set(HVKeyPackageSuffix, suffix);
        RecordingHost host(*m_context, { m_packages->path() });
        QCOMPARE(host.messagesOf(HVMessageInformation).at(0),
                 text("indexing packages (%1) in %2 ").arg(filter, m_packages->path()));
        QCOMPARE(host.messagesOf(HVMessageInformation).filter(text("indexing control")).size(), 1);
        QTEST(host.manager()->keys(), "keys");
    }

    void shouldReadOnlyTheControlFolder()
    {
        const QByteArray control("<hovlets><hovlet key=\"sub\"/></hovlets>");
        m_packages->addPackage(text("P"), { text("a") });
        m_packages->add(text("P.hovlets/Control/sub/c.xml"), control);
        m_packages->add(text("P.hovlets/Control/folder.xml/c.xml"), control);
        m_packages->add(text("P.hovlets/Control/c.txt"), control);
        m_packages->add(text("P.hovlets/c.xml"), control);
        m_packages->add(text("P.hovlets/Control/.hidden.xml"), control);
        m_packages->add(text(".hidden.hovlets/Control/c.xml"), control);
        const QString outside = m_packages->add(text("outside.xml"), control);
        QVERIFY(QFile::link(outside, m_packages->path() + text("/P.hovlets/Control/link.xml")));
        RecordingHost host(*m_context, { m_packages->path() });
        QCOMPARE(host.manager()->keys(), QStringList { text("a") });
        QCOMPARE(host.messagesOf(HVMessageInformation).filter(text("found control file")).size(),
                 1);
        QCOMPARE(host.messagesOf(HVMessageInformation).filter(text("looking for")).size(), 1);
    }

    void shouldReadControlFilesWhateverTheCaseOfTheirSuffix()
    {
        m_packages->addPackage(text("P"), { text("a") });
        m_packages->add(text("P.hovlets/Control/C.XML"),
                        "<hovlets><hovlet key=\"capital\"/></hovlets>");
        RecordingHost host(*m_context, { m_packages->path() });
        QVERIFY(host.manager()->keys().contains(text("capital")));
    }

    void shouldReadTheControlFolderOfTheSettings()
    {
        m_packages->addPackage(text("P"), { text("a") });
        m_packages->add(text("P.hovlets/Steuerung/c.xml"),
                        "<hovlets><hovlet key=\"b\"/></hovlets>");
        m_context->set(HVKeyControlFolderName, text("Steuerung"));
        RecordingHost host(*m_context, { m_packages->path() });
        QCOMPARE(host.manager()->keys(), QStringList { text("b") });
        QVERIFY(host.messagesOf(HVMessageInformation)
                        .contains(text("looking for control files in :%1/P.hovlets/Steuerung")
                                          .arg(m_packages->path())));
    }

    void shouldAcceptAPackageWithoutControlFiles()
    {
        QVERIFY(QDir(m_packages->path()).mkpath(text("P.hovlets")));
        RecordingHost host(*m_context, { m_packages->path() });
        QVERIFY(host.manager()->keys().isEmpty());
        QCOMPARE(host.messages.size(), 4); // no "found" and no failure
        QCOMPARE(host.messagesOf(HVMessageInformation).size(), 4);
    }

    void shouldSkipPathsThatAreNotFolders()
    {
        m_packages->addPackage(text("P"), { text("a") });
        const QString file = m_packages->add(text("file.txt"), "x");
        RecordingHost host(*m_context,
                           { text("/no/such/folder"), QString(), file, m_packages->path() });
        QCOMPARE(host.manager()->keys(), QStringList { text("a") });
        QCOMPARE(host.messagesOf(HVMessageInformation).filter(text("indexing packages")).size(), 1);
    }

    void shouldIndexPathsInTheirOrderAndAsOftenAsNamed()
    {
        PackageFolder second;
        m_packages->addPackage(text("P"), { text("a") });
        second.addPackage(text("Q"), { text("b") });
        RecordingIndex index;
        RecordingHost host(*m_context, { m_packages->path(), second.path(), m_packages->path() },
                           &index);
        QCOMPARE(index.notes.size(), 4);
        QVERIFY(index.notes.at(1).startsWith(m_packages->path()));
        QVERIFY(index.notes.at(2).startsWith(second.path()));
        QCOMPARE(index.notes.at(3), index.notes.at(1));
    }

    void shouldIndexByName()
    {
        for (const char *name : { "c", "A", "d", "b" })
            m_packages->addPackage(text(name), { text(name) });
        for (const char *name : { "z", "Y", "x" })
            m_packages->addControlFile(text("b"), text(name), "<hovlets/>");
        RecordingIndex index;
        RecordingHost host(*m_context, { m_packages->path() }, &index);
        QStringList found;
        for (const QString &note : index.notes.mid(1))
            found += note.section(QLatin1Char(' '), 0, 0).mid(m_packages->path().size() + 1);
        QCOMPARE(found,
                 (QStringList { text("A.hovlets/Control/content.xml"),
                                text("b.hovlets/Control/content.xml"),
                                text("b.hovlets/Control/x.xml"), text("b.hovlets/Control/Y.xml"),
                                text("b.hovlets/Control/z.xml"),
                                text("c.hovlets/Control/content.xml"),
                                text("d.hovlets/Control/content.xml") }));
    }

#ifdef Q_OS_UNIX
    void shouldSkipFilesThatItMayNotRead()
    {
        m_packages->addPackage(text("P"), { text("a") });
        const QString file = m_packages->addControlFile(text("P"), text("secret"), "<hovlets/>");
        QVERIFY(QFile::setPermissions(file, QFile::WriteOwner));
        m_packages->addPackage(text("Secret"), { text("b") });
        const QString package = m_packages->path() + text("/Secret.hovlets");
        QVERIFY(QFile::setPermissions(package, QFile::WriteOwner | QFile::ExeOwner));
        const auto open = qScopeGuard(
                [package] { QFile::setPermissions(package, QFile::Permissions(0x7700)); });
        RecordingIndex index;
        QVERIFY(QFile::setPermissions(m_packages->path(), QFile::Permissions(0x7755)));
        // The real user decides whether a file may be read, and the superuser may read everything.
        const uid_t user = ::getuid();
        const auto restore = qScopeGuard([user] {
            if (::setreuid(user, uid_t(-1)) != 0)
                qFatal("cannot restore the real user");
        });
        QVERIFY(user != 0 || ::setreuid(65534, uid_t(-1)) == 0);
        RecordingHost host(*m_context, { m_packages->path() }, &index);
        QCOMPARE(host.messagesOf(HVMessageInformation).filter(text("secret"), Qt::CaseInsensitive),
                 QStringList());
        QCOMPARE(index.notes.filter(text("content.xml")).size(), 1);
        QCOMPARE(index.notes.filter(text("secret"), Qt::CaseInsensitive), QStringList());
    }
#endif

    void shouldPassCanonicalPathsToTheIndex()
    {
        m_packages->addPackage(text("P"), { text("a") });
        PackageFolder other;
        const QString link = other.path() + text("/link");
        QVERIFY(QFile::link(m_packages->path(), link));
        RecordingIndex index;
        RecordingHost host(*m_context, { link }, &index);
        const QStringList messages = host.messagesOf(HVMessageInformation);
        QCOMPARE(messages.at(0), text("indexing packages (*.hovlets) in %1 ").arg(link));
        QCOMPARE(messages.at(1), text("indexing control files in %1/P.hovlets").arg(link));
        const QString package = m_packages->path() + text("/P.hovlets");
        QCOMPARE(messages.at(3), text("found control file :%1/Control/content.xml").arg(package));
        QCOMPARE(index.notes.at(1), package + text("/Control/content.xml ") + package);
    }

    void shouldIndexAControlFolderThatIsALinkUnderItsOwnName()
    {
        m_packages->addPackage(text("P"), { text("a") });
        const QString package = m_packages->path() + text("/P.hovlets");
        QVERIFY(QDir(package).rename(text("Control"), text("Elsewhere")));
        QVERIFY(QFile::link(package + text("/Elsewhere"), package + text("/Control")));
        RecordingIndex index;
        RecordingHost host(*m_context, { m_packages->path() }, &index);
        QCOMPARE(index.notes.mid(1),
                 QStringList { package + text("/Elsewhere/content.xml ") + package });
        QCOMPARE(index.keys(), QStringList { text("a") });
    }

    void shouldReportAbsolutePaths()
    {
        m_packages->addPackage(text("P"), { text("a") });
        const QString before = QDir::currentPath();
        QVERIFY(QDir::setCurrent(m_packages->path()));
        RecordingHost host(*m_context, { text(".") });
        host.manager()->loadPackage(QFileInfo(text("P.hovlets")));
        QVERIFY(QDir::setCurrent(before));
        const QStringList messages = host.messagesOf(HVMessageInformation);
        QCOMPARE(messages.at(0),
                 text("indexing packages (*.hovlets) in %1 ").arg(m_packages->path()));
        const QString control = m_packages->path() + text("/P.hovlets/Control");
        QCOMPARE(messages.at(6), text("looking for control files in :") + control);
    }

    void shouldAcceptMoreContentLater()
    {
        RecordingHost host(*m_context, {});
        HVManager &manager = *host.manager();
        m_packages->addPackage(text("P"), { text("a") });
        manager.loadDataPath({ m_packages->path() });
        QCOMPARE(manager.keys(), QStringList { text("a") });

        PackageFolder second;
        second.addPackage(text("Q"), { text("b") });
        manager.loadPackage(QFileInfo(second.path() + text("/Q.hovlets")));
        QCOMPARE(manager.keys(), (QStringList { text("b"), text("a") }));

        const QString file = second.addControlFile(text("R"), text("c"),
                                                   "<hovlets><hovlet key=\"c\"/></hovlets>");
        manager.indexControFile(file, second.path() + text("/R.hovlets"));
        QCOMPARE(manager.keys(), (QStringList { text("c"), text("b"), text("a") }));
    }

private:
    std::unique_ptr<HVContext> m_context;
    std::unique_ptr<PackageFolder> m_packages;
};

HOVLETS_TEST_MAIN(tst_HVManagerLoading)
#include "tst_hvmanager_loading.moc"
