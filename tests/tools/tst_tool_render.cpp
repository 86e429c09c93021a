// SPDX-License-Identifier: Apache-2.0
#include "PackageFolder.h"
#include "TestMain.h"
#include "Text.h"
#include "ToolRun.h"
#include "TranslationFile.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QTemporaryDir>
#include <QtGui/QImage>

/// Tests the program's pictures of popups.
class tst_ToolRender : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<PackageFolder>();
        m_pictures = std::make_unique<QTemporaryDir>();
        write("Pen");
        m_folder->addControlFile(text("Draw"), text("Draw.de"),
                                 "<hovlets locale=\"de_DE\" search=\"Default\">"
                                 "<hovlet key=\"pen\" title=\"Ein breiterer Stift\"/></hovlets>");
        m_folder->add(text("Draw.hovlets/l10n/Hovlets_fr_FR.qm"),
                      translationFile("pen", "Pen", text("Un stylo plus large")));
    }

    void shouldTakeAPictureOfAPopup()
    {
        const QImage picture = render({});
        QVERIFY(!picture.isNull());
        QVERIFY(picture.width() > 80 && picture.height() > 30);
        QVERIFY(picture.pixelColor(3, 3).lightness() > 200);
        QCOMPARE(render({}), picture); // the same every time
    }

    void shouldUseTheRequestedLook_data()
    {
        QTest::addColumn<QStringList>("options");
        QTest::newRow("dark") << QStringList { text("--palette"), text("dark") };
        QTest::newRow("twice as large") << QStringList { text("--scale"), text("2") };
        QTest::newRow("large font") << QStringList { text("--font-size"), text("20") };
        QTest::newRow("simple") << QStringList { text("--simple") };
        QTest::newRow("German") << QStringList { text("--locale"), text("de_DE") };
        QTest::newRow("translated") << QStringList { text("--locale"), text("fr_FR") };
        QTest::newRow("placeholder") << QStringList { text("--property"), text("n=A long name") };
    }

    void shouldUseTheRequestedLook()
    {
        QFETCH(QStringList, options);
        const QImage usual = render({});
        const QImage other = render(options);
        QVERIFY(!other.isNull());
        QVERIFY(other != usual);
        if (options.contains(text("dark")))
            QVERIFY(other.pixelColor(3, 3).lightness() < 80);
        if (options.contains(text("--scale")))
            QCOMPARE(other.size(), 2 * usual.size());
    }

    void shouldNotCutTallPopups_data()
    {
        QTest::addColumn<QString>("scale");
        for (const char *scale : { "1", "2", "3" })
            QTest::newRow(scale) << text(scale);
    }

    /// Each line makes the picture taller, at any scale.
    void shouldNotCutTallPopups()
    {
        QFETCH(QString, scale);
        // With large letters, even the room of a screen is too small.
        const QStringList options { text("--scale"), scale, text("--font-size"), text("9") };
        const auto withLines = [&](int count) {
            write("Pen", QByteArray("<p>Line</p>").repeated(count));
            return render(options).height();
        };
        const int step = withLines(10) - withLines(2);
        QVERIFY(step > 150 * scale.toInt());
        QVERIFY(qAbs(withLines(18) - withLines(10) - step) <= 2 * scale.toInt()); // rounding
    }

    void shouldPutAllKeysOnASheet()
    {
        const QImage one = render({});
        const QString file = m_pictures->filePath(text("sheet.png"));
        const ToolRun run({ text("render"), text("--all"), m_folder->path(), text("-o"), file });
        QCOMPARE(run.error, QByteArray());
        QCOMPARE(run.status, 0);
        const QImage sheet(file);
        QVERIFY(sheet.width() > one.width() && sheet.height() > one.height());
    }

    void shouldReportThePicturesThatChanged()
    {
        const QString expected = m_pictures->filePath(text("expected"));
        const QStringList compare { text("render"),   text("--compare"), expected,
                                    m_folder->path(), text("--format"),  text("json") };
        const ToolRun made({ text("render"), m_folder->path(), text("--output-dir"), expected });
        QCOMPARE(made.status, 0);
        QCOMPARE(QDir(expected).entryList(QDir::Files),
                 (QStringList { text("eraser%2Fsoft.png"), text("pen.png") }));
        const ToolRun same(compare);
        QCOMPARE(same.error, QByteArray());
        QCOMPARE(same.status, 0);

        write("Pencil");
        QVERIFY(QFile::rename(expected + text("/eraser%2Fsoft.png"), expected + text("/gone.png")));
        const ToolRun changed(compare);
        QCOMPARE(changed.status, 1);
        QCOMPARE(changed.json().value(text("changed")).toArray(), QJsonArray { text("pen") });
        QCOMPARE(changed.json().value(text("added")).toArray(), QJsonArray { text("eraser/soft") });
        QCOMPARE(changed.json().value(text("missing")).toArray(), QJsonArray { text("gone") });
        const ToolRun tolerant(compare + QStringList { text("--tolerance"), text("1") });
        QCOMPARE(tolerant.json().value(text("changed")).toArray(), QJsonArray());
    }

    void shouldReportMistakesInTheUserInterface()
    {
        m_folder->add(text("Draw.hovlets/ui/HovletsUI.qml"),
                      "import QtQuick 2.15\nItem { nonsense }");
        const ToolRun run(arguments({}));
        QVERIFY(run.status != 0);
        QVERIFY2(run.error.contains("HovletsUI.qml:2"), run.error.constData());
    }

    void shouldReportAKeyThatIsNotServed()
    {
        const ToolRun run({ text("render"), text("nowhere"), m_folder->path(), text("-o"),
                            m_pictures->filePath(text("none.png")) });
        QCOMPARE(run.status, 1);
        QVERIFY2(run.error.contains("no entry for the key \"nowhere\""), run.error.constData());
        QCOMPARE(run.error.count('\n'), 1);
        QVERIFY(!QFile::exists(m_pictures->filePath(text("none.png"))));
    }

    void shouldContinueWithTheOtherKeysWhenOneIsNotServed()
    {
        m_folder->addControlFile(text("Draw"), text("German"),
                                 "<hovlets locale=\"de_DE\"><hovlet key=\"nur\"/></hovlets>");
        const QString sheet = m_pictures->filePath(text("sheet.png"));
        const QString pictures = m_pictures->filePath(text("pictures"));
        const ToolRun run({ text("render"), text("--all"), m_folder->path(), text("-o"), sheet,
                            text("--output-dir"), pictures });
        QCOMPARE(run.status, 1);
        QVERIFY2(run.error.contains("no entry for the key \"nur\""), run.error.constData());
        QCOMPARE(run.error.count('\n'), 1);
        QVERIFY(QFile::exists(sheet));
        QCOMPARE(QDir(pictures).entryList(QDir::Files),
                 (QStringList { text("eraser%2Fsoft.png"), text("pen.png") }));

        // The comparison reports what could not be shown as well.
        const ToolRun same({ text("render"), text("--compare"), pictures, m_folder->path() });
        QCOMPARE(same.output, QByteArray());
        QCOMPARE(same.status, 1);
    }

    void shouldShowWhatTheHostAdds()
    {
        const QImage usual = render({});
        m_folder->add(text("keys.xml"),
                      "<hovletkeys><key name=\"pen\" shortcut=\"Ctrl+P\"/></hovletkeys>");
        const QImage keyed = render({ text("--key-data"), m_folder->path() + text("/keys.xml") });
        QVERIFY(!keyed.isNull() && keyed != usual);
        m_folder->add(text("extra/ui/Other.qml"),
                      "import QtQuick 2.15\nRectangle { width: 77; height: 33 }");
        m_folder->addControlFile(text("Draw"), text("Draw"),
                                 "<hovlets><hovlet key=\"pen\" ui=\"ui/Other.qml\"/></hovlets>");
        const QImage other = render({ text("--extra-path"), m_folder->path() + text("/extra") });
        QCOMPARE(other.size(), QSize(77, 33));
    }

    void shouldRefuseWhatItCannotDo_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QByteArray>("words");
        QTest::newRow("no output")
                << QStringList { text("pen"), text("PATH") } << QByteArray("-o FILE.png");
        QTest::newRow("not writable")
                << QStringList { text("pen"), text("PATH"), text("-o"), text("/proc/x/y.png") }
                << QByteArray("/proc/x/y.png cannot be written");
        QTest::newRow("nothing to compare with")
                << QStringList { text("--compare"), text("/no/such"), text("PATH") }
                << QByteArray("/no/such is not a folder");
        QTest::newRow("no key data")
                << QStringList { text("pen"),   text("PATH"),       text("-o"),
                                 text("x.png"), text("--key-data"), text("/no/such.xml") }
                << QByteArray("--key-data: /no/such.xml is not a readable file");
        QTest::newRow("no components")
                << QStringList { text("pen"),   text("PATH"),         text("-o"),
                                 text("x.png"), text("--extra-path"), text("/no/such") }
                << QByteArray("--extra-path: /no/such is not a readable folder");
        QTest::newRow("no value") << QStringList {
            text("pen"), text("PATH"), text("-o"), text("/dev/null"), text("--property"), text("n")
        } << QByteArray("NAME=VALUE");
    }

    void shouldRefuseWhatItCannotDo()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QByteArray, words);
        const ToolRun run(QStringList { text("render") }
                          + arguments.replaceInStrings(text("PATH"), m_folder->path()));
        QCOMPARE(run.status, 2);
        QVERIFY2(run.error.contains(words), run.error.constData());
        QCOMPARE(run.error.count('\n'), 1);
    }

private:
    void write(const QByteArray &title, const QByteArray &children = {})
    {
        m_folder->addControlFile(
                text("Draw"), text("Draw"),
                "<hovlets locale=\"en_US\" search=\"Default\">"
                "<hovlet key=\"pen\" title=\""
                        + title + "\"><p>Draws with %(n)s.</p><p>More.</p>" + children
                        + "</hovlet>"
                          "<hovlet key=\"eraser/soft\" title=\"Eraser\"/></hovlets>");
    }

    QStringList arguments(const QStringList &options)
    {
        return QStringList { text("render"), text("pen"), m_folder->path(), text("-o"),
                             m_pictures->filePath(text("pen.png")) }
        + options;
    }

    QImage render(const QStringList &options)
    {
        const ToolRun run(arguments(options));
        if (run.status != 0)
            qWarning("%s", run.error.constData());
        return QImage(m_pictures->filePath(text("pen.png")));
    }

    std::unique_ptr<PackageFolder> m_folder;
    std::unique_ptr<QTemporaryDir> m_pictures;
};

HOVLETS_TEST_MAIN(tst_ToolRender)

#include "tst_tool_render.moc"
