// SPDX-License-Identifier: Apache-2.0
#include "HVLimits.h"
#include "IndexTest.h"
#include "TestMain.h"

#include <sys/stat.h>

using namespace Hovlets;

/// Tests files that are swapped or grow after they were indexed, or must never be read.
class tst_Hostile_Files : public IndexTest
{
    Q_OBJECT

private:
    static void makePipe(const QString &path)
    {
        QFile::remove(path);
        QCOMPARE(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    }

    static void makeLink(const QString &target, const QString &path)
    {
        QFile::remove(path);
        QVERIFY(QFile::link(target, path));
    }

    QStringList messages() const
    {
        QStringList messages;
        for (const QList<QVariant> &arguments : *m_skipped)
            messages += arguments.constFirst().toString();
        return messages;
    }

    std::unique_ptr<QSignalSpy> m_skipped;

private Q_SLOTS:
    void init()
    {
        IndexTest::init();
        m_skipped = std::make_unique<QSignalSpy>(m_index.get(), &HVIndex::fileSkipped);
    }

    void cleanup()
    {
        m_skipped.reset();
        IndexTest::cleanup();
        HVLimits::setCurrent({});
    }

    void shouldNotWaitForAControlFileThatBecameAPipe()
    {
        index("Foo", "good", "<hovlets>" + entry("a", "good") + "</hovlets>");
        const QString swapped = index("Foo", "swapped", "<hovlets/>");
        makePipe(swapped);
        for (int hover = 0; hover < 3; ++hover) {
            QCOMPARE(Found(*m_index, "a").attribute("name"), QStringLiteral("good"));
            QCOMPARE(m_index->keys(), QStringList { QStringLiteral("a") });
        }
        m_index->indexControlFile(swapped, package("Foo"));
        QCOMPARE(messages(),
                 QStringList { swapped + QStringLiteral(" is skipped: not a regular file") });
    }

    void shouldNotReadAControlFileThatBecameADevice()
    {
        index("Foo", "good", "<hovlets>" + entry("a", "good") + "</hovlets>");
        const QString swapped = index("Foo", "swapped", "<hovlets/>");
        makeLink(QStringLiteral("/dev/zero"), swapped);
        QCOMPARE(Found(*m_index, "a").attribute("name"), QStringLiteral("good"));
        QCOMPARE(m_index->keys(), QStringList { QStringLiteral("a") });
        QCOMPARE(messages(),
                 QStringList { swapped + QStringLiteral(" is skipped: not a regular file") });
    }

    void shouldNotReadOtherFilesAsKeyData()
    {
        index("Foo", "a", "<hovlets>" + entry("a", "1") + "</hovlets>");
        const QString file = m_folder->path() + QStringLiteral("/keys.xml");
        m_context->set(HVKeyKeyDataFile, file);
        makePipe(file);
        QCOMPARE(Found(*m_index, "a").attribute("name"), QStringLiteral("1"));
        makeLink(QStringLiteral("/dev/zero"), file);
        QCOMPARE(Found(*m_index, "a").attribute("name"), QStringLiteral("1"));
        QCOMPARE(messages(),
                 QStringList { file + QStringLiteral(" is skipped: not a regular file") });
    }

    void shouldSkipFilesBeyondTheirLimit()
    {
        HVLimits limits;
        limits.controlFileSize = 200;
        HVLimits::setCurrent(limits);
        index("Foo", "good", "<hovlets>" + entry("a", "good") + "</hovlets>");
        const QString grown = index("Foo", "grown", "<hovlets/>");
        m_folder->addControlFile(QStringLiteral("Foo"), QStringLiteral("grown"),
                                 "<hovlets>" + entry("a", "grown") + QByteArray(200, ' ')
                                         + "</hovlets>");
        QCOMPARE(Found(*m_index, "a").attribute("name"), QStringLiteral("good"));
        QCOMPARE(m_index->keys(), QStringList { QStringLiteral("a") });
        const QString keyData = m_folder->add(QStringLiteral("keys.xml"),
                                              "<hovletkeys><key name=\"a\" shortcut=\"S\"/>"
                                                      + QByteArray(200, ' ') + "</hovletkeys>");
        m_context->set(HVKeyKeyDataFile, keyData);
        QCOMPARE(Found(*m_index, "a").attribute("shortcut"), QString());
        const QString large =
                index("Foo", "large", "<hovlets>" + QByteArray(200, ' ') + "</hovlets>");
        QCOMPARE(messages(),
                 (QStringList { grown + QStringLiteral(" is skipped: larger than 200 bytes"),
                                keyData + QStringLiteral(" is skipped: larger than 200 bytes"),
                                large + QStringLiteral(" is skipped: larger than 200 bytes") }));
    }

    void shouldReportTheLimitThatAFileMeets()
    {
        index("Foo", "good", "<hovlets>" + entry("a", "good") + "</hovlets>");
        const QString nested = index("Foo", "nested",
                                     "<!DOCTYPE hovlets [\n<!ELEMENT a "
                                             + QByteArray("(").repeated(300) + ">]>\n<hovlets/>");
        const QString deep = index("Foo", "deep",
                                   "<hovlets>" + entry("a", "deep")
                                           + QByteArray("<x>").repeated(600) + "</hovlets>");
        for (int hover = 0; hover < 2; ++hover)
            QCOMPARE(Found(*m_index, "a").attribute("name"), QStringLiteral("good"));
        QCOMPARE(
                messages(),
                (QStringList {
                        deep + QStringLiteral(" is skipped: elements nest deeper than 512 levels"),
                        nested
                                + QStringLiteral(" is skipped: content models nest deeper than 256 "
                                                 "levels") }));
    }

    void shouldLetAHostAddFilesWhenItHearsOfOne()
    {
        index("Foo", "good", "<hovlets>" + entry("a", "good") + "</hovlets>");
        const QString swapped = index("Foo", "swapped", "<hovlets/>");
        makePipe(swapped);
        int added = 0;
        connect(m_index.get(), &HVIndex::fileSkipped, this, [&] {
            for (; added < 100; ++added)
                index("Foo", qPrintable(QString::number(added)), "<hovlets/>");
        });
        QCOMPARE(Found(*m_index, "a").attribute("name"), QStringLiteral("good"));
        QCOMPARE(added, 100);
    }
};

HOVLETS_TEST_MAIN(tst_Hostile_Files)
#include "tst_hostile_files.moc"
