// SPDX-License-Identifier: Apache-2.0
#include "HVContentTranslator.h"
#include "HVLimits.h"
#include "OpenCounter.h"
#include "PackageFolder.h"
#include "TestMain.h"
#include "TranslationFile.h"

#include <QtCore/QDateTime>

#include <sys/stat.h>

using namespace Hovlets;

class tst_HVContentTranslator : public QObject
{
    Q_OBJECT

private:
    QString write(const QString &translation) const
    {
        return m_folder->add(QStringLiteral("l10n/words.qm"),
                             translationFile("Menu", "Open", translation));
    }

    QString translate(const QString &file)
    {
        return m_translator->translate(file, QStringLiteral("Open"), QStringLiteral("Menu"));
    }

    std::unique_ptr<PackageFolder> m_folder;
    std::unique_ptr<HVContentTranslator> m_translator;
    QStringList m_warnings;

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<PackageFolder>();
        m_warnings.clear();
        m_translator = std::make_unique<HVContentTranslator>(
                this, [this](const QString &warning) { m_warnings += warning; });
    }

    void cleanup()
    {
        m_translator.reset();
        QCOMPARE(findChild<QTranslator *>(), nullptr);
        HVLimits::setCurrent({});
    }

    void shouldKeepTranslatingWhileTheFileIsRewritten()
    {
        const QString path = write(QStringLiteral("deutsch"));
        QCOMPARE(translate(path), QStringLiteral("deutsch"));
        // Writes in place: if the file were mapped, its memory would be lost.
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        QCOMPARE(translate(path), QStringLiteral("deutsch"));
    }

    void shouldNoticeAChangeWhenContentIsShown()
    {
        const QString path = write(QStringLiteral("deutsch"));
        QCOMPARE(translate(path), QStringLiteral("deutsch"));
        write(QStringLiteral("neu"));
        QCOMPARE(translate(path), QStringLiteral("deutsch"));
        m_translator->contentShown();
        QCOMPARE(translate(path), QStringLiteral("neu"));
        // Another one right after it, of the same size.
        write(QStringLiteral("alt"));
        m_translator->contentShown();
        QCOMPARE(translate(path), QStringLiteral("alt"));
        QVERIFY(QFile::remove(path));
        m_translator->contentShown();
        QCOMPARE(translate(path), QStringLiteral("Open"));
        QCOMPARE(m_warnings, QStringList());
    }

    void shouldWarnOnceAboutAFileThatItSkips_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("problem");
        const QByteArray good = translationFile("Menu", "Open", QStringLiteral("deutsch"));
        QTest::newRow("text") << QByteArray("no such thing") << "not a translation file";
        QTest::newRow("damaged") << good.left(good.size() - 1) << "damaged";
        QTest::newRow("damaged rules") << good + QByteArray("\x88\0\0\0\x01\xff", 6) << "damaged";
    }

    void shouldWarnOnceAboutAFileThatItSkips()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, problem);
        const QString path = m_folder->add(QStringLiteral("l10n/words.qm"), bytes);
        const QStringList warning {
            QStringLiteral("Translation file %1 is skipped: %2").arg(path, problem)
        };
        for (int show = 0; show < 3; ++show) {
            m_translator->contentShown();
            QCOMPARE(translate(path), QStringLiteral("Open"));
            QCOMPARE(translate(path), QStringLiteral("Open"));
        }
        QCOMPARE(m_warnings, warning);
        write(QStringLiteral("deutsch"));
        QCOMPARE(translate(path), QStringLiteral("deutsch"));
        QCOMPARE(m_warnings, warning);
    }

    /// Its time stamp proves nothing, so it is read again at the next show, but not for each text.
    void shouldReadAFileThatItSkipsOncePerShow()
    {
        const QString path =
                m_folder->add(QStringLiteral("l10n/words.qm"), QByteArray("no such thing"));
        {
            QFile file(path);
            QVERIFY(file.open(QIODevice::ReadWrite));
            QVERIFY(file.setFileTime(QDateTime::currentDateTime().addYears(10),
                                     QFileDevice::FileModificationTime));
        }
        OpenCounter opened(path);
        for (int show = 0; show < 2; ++show) {
            m_translator->contentShown();
            for (int time = 0; time < 3; ++time)
                QCOMPARE(translate(path), QStringLiteral("Open"));
            QCOMPARE(opened.take(), 1);
        }
        QCOMPARE(int(m_warnings.size()), 1);
        // A change that is visible counts at once.
        write(QStringLiteral("deutsch"));
        QCOMPARE(translate(path), QStringLiteral("deutsch"));
    }

    void shouldSkipAPipe()
    {
        const QString path = m_folder->path() + QStringLiteral("/words.qm");
        QCOMPARE(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
        QCOMPARE(translate(path), QStringLiteral("Open"));
        QCOMPARE(m_warnings,
                 QStringList { QStringLiteral("Translation file %1 is skipped: not a regular file")
                                       .arg(path) });
    }

    void shouldSkipALargeFile()
    {
        const QString path = write(QStringLiteral("deutsch"));
        HVLimits limits;
        limits.translationFileSize = 10;
        HVLimits::setCurrent(limits);
        QCOMPARE(translate(path), QStringLiteral("Open"));
        QCOMPARE(
                m_warnings,
                QStringList { QStringLiteral("Translation file %1 is skipped: larger than 10 bytes")
                                      .arg(path) });
    }

    void shouldCutATranslationTooLongToShow()
    {
        HVLimits limits;
        limits.shownCharacters = 10;
        HVLimits::setCurrent(limits);
        QCOMPARE(translate(write(QString(40, QLatin1Char('y')))), QString(40, QLatin1Char('y')));
        m_translator->contentShown();
        QCOMPARE(translate(write(QString(41, QLatin1Char('y')))), QString(40, QLatin1Char('y')));
    }

    void shouldReadNothingBesidesTheFile()
    {
        // Qt tries other names, too: with ".qm" appended, and with parts of the name removed.
        const QString path = write(QStringLiteral("deutsch"));
        const QString stem = path.chopped(3);
        QCOMPARE(translate(stem), QStringLiteral("Open"));
        QCOMPARE(translate(path + QStringLiteral("_de_DE")), QStringLiteral("Open"));
        // Qt would resolve a relative name in the host's working directory.
        const QString before = QDir::currentPath();
        QVERIFY(QDir::setCurrent(m_folder->path()));
        QCOMPARE(translate(QStringLiteral("l10n/words.qm")), QStringLiteral("Open"));
        QVERIFY(QDir::setCurrent(before));
        QCOMPARE(m_warnings, QStringList());
    }
};

HOVLETS_TEST_MAIN(tst_HVContentTranslator)
#include "tst_hvcontenttranslator.moc"
