// SPDX-License-Identifier: Apache-2.0
#include "PopupBench.h"
#include "TestMain.h"
#include "TranslationFile.h"

#include "HVEntryReader.h"
#include "HVIndex.h"
#include "HVLookUpMemory.h"

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtGui/QImage>

using namespace Hovlets;

namespace {

/// Removes a file after it has translated a text.
class RemovingHost : public RecordingHost
{
public:
    using RecordingHost::RecordingHost;

    QString translateString(const QString &text, const QString &context) override
    {
        const QString translation = RecordingHost::translateString(text, context);
        if (!removed.isEmpty())
            QFile::remove(removed);
        return translation;
    }

    QString removed; // path
};

} // namespace

/// Tests HVKeyConfineContent, which restricts the files that control files may name.
class tst_HVView_Confined : public QObject
{
    Q_OBJECT

private:
    void setAttribute(const char *name, const QString &value)
    {
        m_bench->view()->content()->setAttribute(QString::fromLatin1(name), value);
    }

    QString find(const QString &file) { return m_bench->view()->findResource(file); }

    QString path(const char *relative) const
    {
        return m_bench->folder.path() + QLatin1Char('/') + QString::fromLatin1(relative);
    }

    QString refusal(const QString &file) const
    {
        return QStringLiteral("%1 is refused: it is outside of the packages that %2 may use")
                .arg(file, m_bench->view()->content()->attribute(QStringLiteral("HVLocation")));
    }

    std::unique_ptr<HoverBench> m_bench;
    QString m_workingDirectory;

private Q_SLOTS:
    void init()
    {
        m_workingDirectory = QDir::currentPath();
        m_bench = std::make_unique<HoverBench>();
        m_bench->folder.add(QStringLiteral("elsewhere/evil.qml"), "import QtQuick 2.15\nItem {}");
        m_bench->folder.add(QStringLiteral("elsewhere/x.png"), "x");
        m_bench->folder.add(QStringLiteral("Pack.hovlets/Resources/x.png"), "x");
        m_bench->folder.addControlFile(QStringLiteral("Other"), QStringLiteral("c"), "<hovlets/>");
        m_bench->host->manager()->loadDataPath({ m_bench->folder.path() });
        m_bench->context().set(HVKeyConfineContent, true);
        m_bench->show();
        m_bench->host->forgetMessages();
    }

    void cleanup()
    {
        m_bench.reset();
        QDir::setCurrent(m_workingDirectory);
    }

    void shouldBeOffUnlessItIsSet()
    {
        m_bench->context().set(HVKeyConfineContent, QVariant());
        setAttribute("ui", path("elsewhere/evil.qml"));
        QCOMPARE(m_bench->view()->uiRootFilePath(), path("elsewhere/evil.qml"));
        QCOMPARE(find(QStringLiteral("../../elsewhere/x.png")), path("elsewhere/x.png"));
    }

    void shouldFindFilesInThePackage()
    {
        QCOMPARE(find(QStringLiteral("x.png")), path("Pack.hovlets/Resources/x.png"));
        QCOMPARE(find(QStringLiteral("../Control/content.xml")),
                 path("Pack.hovlets/Control/content.xml"));
        QCOMPARE(find(QStringLiteral("none.png")), QStringLiteral("Resources"));
        QCOMPARE(m_bench->host->messagesOf(HVMessageWarning), QStringList());
    }

    void shouldFindFilesInSearchedPackagesAndTheExtraPath()
    {
        const QString other =
                m_bench->folder.add(QStringLiteral("Other.hovlets/Resources/o.png"), "x");
        const QString extra = m_bench->folder.add(QStringLiteral("extra/Resources/e.png"), "x");
        m_bench->context().set(HVKeyExtraComponentPath, path("extra"));
        QCOMPARE(find(QStringLiteral("e.png")), extra);
        QCOMPARE(find(other), QStringLiteral("Resources"));
        static_cast<HVXmlElement *>(m_bench->view()->content()->parent())
                ->setAttribute(QStringLiteral("search"), QStringLiteral("Other"));
        QCOMPARE(find(QStringLiteral("o.png")), other);
        QCOMPARE(find(other), other);
    }

    void shouldRefuseFilesElsewhere_data()
    {
        QTest::addColumn<QByteArray>("attribute");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("file");
        QTest::newRow("ui, absolute") << QByteArray("ui") << "DATA/elsewhere/evil.qml"
                                      << "";
        QTest::newRow("ui, up") << QByteArray("ui") << "../elsewhere/evil.qml"
                                << "";
        QTest::newRow("resource") << QByteArray("title") << ""
                                  << "../../elsewhere/x.png";
        QTest::newRow("resource, absolute") << QByteArray("title") << ""
                                            << "DATA/elsewhere/x.png";
        QTest::newRow("resources") << QByteArray("resources") << "../elsewhere"
                                   << "x.png";
        QTest::newRow("resources, a file") << QByteArray("resources") << "../elsewhere/x.png"
                                           << "";
        QTest::newRow("neighbour") << QByteArray("title") << ""
                                   << "../../Other.hovlets/Control/c.xml";
        QTest::newRow("similar name") << QByteArray("title") << ""
                                      << "../../Pack.hovlets2/y.png";
    }

    void shouldRefuseFilesElsewhere()
    {
        QFETCH(QByteArray, attribute);
        QFETCH(QString, value);
        QFETCH(QString, file);
        const QString data = m_bench->folder.path();
        m_bench->folder.add(QStringLiteral("Pack.hovlets2/y.png"), "x");
        setAttribute(attribute.constData(), value.replace(QLatin1String("DATA"), data));
        file.replace(QLatin1String("DATA"), data);
        for (int time = 0; time < 2; ++time) {
            const QString found =
                    attribute == "ui" ? m_bench->view()->uiRootFilePath() : find(file);
            QVERIFY2(found.isEmpty() || found == QLatin1String("Resources"), qPrintable(found));
        }
        const QStringList warnings = m_bench->host->messagesOf(HVMessageWarning);
        QCOMPARE(warnings.size(), 1);
        QVERIFY2(warnings.constFirst().contains(QLatin1String(" is refused: it is outside of ")),
                 qPrintable(warnings.constFirst()));
    }

    void shouldResolveSymbolicLinks()
    {
        const QString link = path("Pack.hovlets/Resources/link.png");
        QVERIFY(QFile::link(path("elsewhere/x.png"), link));
        QVERIFY(QFile::link(path("elsewhere"), path("Pack.hovlets/Resources/folder")));
        QCOMPARE(find(QStringLiteral("link.png")), QStringLiteral("Resources"));
        QCOMPARE(m_bench->host->messagesOf(HVMessageWarning), QStringList { refusal(link) });
        QCOMPARE(find(QStringLiteral("folder/x.png")), QStringLiteral("Resources"));

        QVERIFY(QFile::link(path("Pack.hovlets"), path("linked")));
        m_bench->context().set(HVKeyExtraComponentPath, path("linked"));
        setAttribute("resources", QStringLiteral("Other"));
        const QString inside = m_bench->folder.add(QStringLiteral("Pack.hovlets/Other/i.png"), "x");
        QCOMPARE(find(QStringLiteral("i.png")), inside);
    }

    /// A host usually starts in the user's home folder, which has downloads.
    void shouldNotTakeFilesFromTheWorkingDirectory()
    {
        QVERIFY(QDir::setCurrent(path("elsewhere")));
        setAttribute("ui", QStringLiteral("evil.qml"));
        QCOMPARE(m_bench->view()->uiRootFilePath(), QString());
        QCOMPARE(m_bench->host->messagesOf(HVMessageWarning),
                 QStringList { refusal(QStringLiteral("evil.qml")) });
        m_bench->show();
    }

    void shouldPermitFilesThatTheHostNames()
    {
        m_bench->context().set(HVKeyRichUiFile, path("elsewhere/evil.qml"));
        m_bench->context().set(HVKeyResourceFolder, path("elsewhere"));
        QCOMPARE(m_bench->view()->uiRootFilePath(), path("elsewhere/evil.qml"));
        QCOMPARE(find(QStringLiteral("x.png")), path("elsewhere/x.png"));
        QCOMPARE(find(QStringLiteral("../Other.hovlets/Control/c.xml")), path("elsewhere"));
    }

    void shouldRefuseTranslationsElsewhere()
    {
        const QString file = QStringLiteral("Hovlets_de_DE.qm");
        m_bench->folder.add(QStringLiteral("elsewhere/") + file,
                            translationFile("", "text", QStringLiteral("Wort")));
        m_bench->context().set(HVKeyLocale, QStringLiteral("de_DE"));
        setAttribute("l10n_name", path("elsewhere"));
        m_bench->host->forgetMessages();
        QCOMPARE(m_bench->view()->translatedByPackage(QStringLiteral("text"), {}),
                 QStringLiteral("text"));
        QCOMPARE(m_bench->host->messagesOf(HVMessageWarning),
                 QStringList { refusal(path("elsewhere/") + file) });
    }

    void shouldConfineTheResourceDirectory()
    {
        const auto directory = [&](const QString &value) {
            setAttribute("resource", value);
            return m_bench->view()->resourceDirectoryPath();
        };
        QCOMPARE(directory(QStringLiteral("Media")), QStringLiteral("Media"));
        QCOMPARE(directory(QStringLiteral("a/../b")), QStringLiteral("a/../b"));
        QCOMPARE(directory(path("elsewhere")), QStringLiteral("Resources"));
        QCOMPARE(directory(QStringLiteral("../elsewhere")), QStringLiteral("Resources"));
        QVERIFY(QFile::link(path("elsewhere"), path("Pack.hovlets/Linked")));
        QCOMPARE(directory(QStringLiteral("Linked")), QStringLiteral("Resources"));
    }

    /// Every text and picture of a popup searches for files.
    /// An entry with hundreds of texts would otherwise search all its folders for each of them.
    void shouldLookForAFileOnceWhileAnEntryIsRead()
    {
        HVContext settings = m_bench->context();
        settings.set(HVKeyLocale, QStringLiteral("en_US"));
        auto host =
                std::make_unique<RemovingHost>(settings, QStringList { m_bench->folder.path() });
        host->removed = m_bench->folder.add(QStringLiteral("Pack.hovlets/l10n/Hovlets_en_US.qm"),
                                            translationFile("a", "text", QStringLiteral("shown")));
        const QString removed = host->removed;
        m_bench->host = std::move(host);
        QVERIFY(m_bench->show());
        HVView *view = m_bench->view();
        for (int i = 0; i < 3; ++i) {
            auto *paragraph = new HVXmlElement(view->content());
            paragraph->setTagName(QStringLiteral("p"));
            paragraph->setContent(QStringLiteral("text"));
        }
        const QVariantList blocks = HVEntryReader(view)
                                            .read(view->content(), false)
                                            .value(QStringLiteral("blocks"))
                                            .toList();
        QVERIFY(!QFile::exists(removed));
        QCOMPARE(int(blocks.size()), 3);
        for (const QVariant &block : blocks)
            QCOMPARE(block.toMap().value(QStringLiteral("text")).toString(),
                     QStringLiteral("shown"));
        // The next look-up notices.
        QCOMPARE(view->translate(QStringLiteral("text"), QStringLiteral("a")),
                 QStringLiteral("text"));
    }

    /// Each missing file is looked for in all folders.
    void shouldStopLookingForPicturesAfterManyMissingOnes()
    {
        HVView *view = m_bench->view();
        const QImage picture(4, 4, QImage::Format_RGB32);
        QVERIFY(picture.save(path("Pack.hovlets/Resources/x.png")));
        const auto add = [&](const QString &file) {
            auto *image = new HVXmlElement(view->content());
            image->setTagName(QStringLiteral("img"));
            image->setAttribute(QStringLiteral("src"), file);
            image->setAttribute(QStringLiteral("alt"), file);
        };
        const auto kindOfLast = [&](QStringList &warnings) {
            HVEntryReader reader(view);
            connect(&reader, &HVEntryReader::warned, this,
                    [&](const QString &warning) { warnings += warning; });
            return reader.read(view->content(), false)
                    .value(QStringLiteral("blocks"))
                    .toList()
                    .constLast()
                    .toMap()
                    .value(QStringLiteral("kind"))
                    .toString();
        };
        QStringList warnings;
        for (int i = 0; i < 19; ++i)
            add(QStringLiteral("%1.png").arg(i));
        add(QStringLiteral("x.png"));
        QCOMPARE(kindOfLast(warnings), QStringLiteral("image"));
        QCOMPARE(warnings, QStringList());
        add(QStringLiteral("19.png"));
        add(QStringLiteral("x.png"));
        QCOMPARE(kindOfLast(warnings), QStringLiteral("paragraph"));
        QCOMPARE(int(warnings.size()), 1);
        QVERIFY(warnings.first().endsWith(QLatin1String("it has more than 20 missing files")));
    }

    void shouldResolveFoldersOnceWhileAnEntryIsRead()
    {
        const HVLookUpMemory memory;
        const HVIndex *index = m_bench->host->manager()->index();
        const HVXmlElement *content = m_bench->view()->content();
        int made = 0;
        const auto search = [&](bool isConfined, const QString &hostPath) {
            memory.search(content, isConfined, hostPath, [&] {
                ++made;
                return HVComponentSearch(*index, content);
            });
        };
        for (int i = 0; i < 3; ++i)
            search(true, QString());
        QCOMPARE(made, 3);
        {
            const HVLookUpMemory::Scope reading(memory);
            const HVLookUpMemory::Scope inner(memory);
            for (int i = 0; i < 3; ++i)
                search(true, QString());
            QCOMPARE(made, 4);
            search(true, QStringLiteral("l10n"));
            QCOMPARE(made, 5);
            search(false, QString());
            QCOMPARE(made, 6);
        }
        search(false, QString());
        QCOMPARE(made, 7);
    }

    void shouldSearchAPackageOnlyOnce()
    {
        const QString names = QStringLiteral("Other,none ,");
        const QString search = names.repeated(100000);
        auto *root = static_cast<HVXmlElement *>(m_bench->view()->content()->parent());
        root->setAttribute(QStringLiteral("search"), search);
        const QString last =
                m_bench->folder.add(QStringLiteral("Other.hovlets/Resources/o.png"), "x");
        QElapsedTimer timer;
        timer.start();
        for (int time = 0; time < 300; ++time)
            QCOMPARE(find(QStringLiteral("o.png")), last);
        QVERIFY2(timer.elapsed() < 5000, qPrintable(QString::number(timer.elapsed())));
        const HVIndex *index = m_bench->host->manager()->index();
        const int used = int(16384 / names.size()); // of an attribute, 16,384 characters are used
        QCOMPARE(index->componentPathsForElement(m_bench->view()->content(), {}).size(), used + 1);
    }
};

HOVLETS_TEST_MAIN(tst_HVView_Confined)
#include "tst_hvview_confined.moc"
