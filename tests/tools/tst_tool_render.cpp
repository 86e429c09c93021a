// SPDX-License-Identifier: Apache-2.0
#include "ClipFolder.h"
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

    void shouldRenderCornersShadowAndArrowOnATransparentGround_data()
    {
        QTest::addColumn<int>("scale");
        QTest::newRow("1") << 1;
        QTest::newRow("2") << 2;
    }

    void shouldRenderCornersShadowAndArrowOnATransparentGround()
    {
        QFETCH(int, scale);
        const QStringList scaled { text("--scale"), QString::number(scale) };
        const QImage plain = render(scaled);
        const QImage picture = render(scaled + QStringList { text("--surface") });
        const int margin = (picture.width() - plain.width()) / 2;
        QVERIFY(margin >= 20 * scale);
        QCOMPARE(picture.size(), plain.size() + 2 * QSize(margin, margin));
        QCOMPARE(picture.pixelColor(0, 0).alpha(), 0);
        // The corner of the popup lets the shadow through; its middle is the popup's.
        const auto alphaAt = [&](int x, int y) { return picture.pixelColor(x, y).alpha(); };
        QVERIFY(alphaAt(margin, margin) < 255);
        const QPoint middle(margin + plain.width() / 2, margin + 3 * scale);
        QCOMPARE(picture.pixel(middle), plain.pixel(middle - QPoint(margin, margin)));
        // Right above the popup, only the arrow is opaque.
        int arrow = 0;
        for (int x = 0; x < picture.width(); ++x)
            arrow += alphaAt(x, margin - 3 * scale) == 255;
        QVERIFY(arrow > 0 && arrow < 20 * scale);
    }

    void shouldRenderPinnedPopupsWithTheirTitleBar()
    {
        const QImage plain = render({});
        const QImage pinned = render({ text("--pinned") });
        // The bar is darker than the popup.
        QVERIFY(pinned.pixelColor(4, 10).lightness() < plain.pixelColor(4, 10).lightness());
        const QImage rounded = render({ text("--pinned"), text("--surface") });
        QCOMPARE(rounded.size(), pinned.size());
        QCOMPARE(rounded.pixelColor(0, 0).alpha(), 0);
    }

    void shouldMirrorPopupsOfLocalesThatAreWrittenFromRightToLeft()
    {
        const QImage usual = render({});
        const QImage mirrored = render({ text("--locale"), text("ar_EG") });
        QCOMPARE(mirrored.size(), usual.size());
        QVERIFY(mirrored != usual);
    }

    void shouldShowTheLastFrameOfAClip()
    {
        const ClipFolder clips;
        const QString clip =
                clips.make(text("late.mp4"),
                           text("-f lavfi -i color=black:s=640x480:r=25:d=3,"
                                "drawbox=color=white:t=fill:enable=gte(n\\,74) -pix_fmt yuv420p"));
        QVERIFY(!clip.isEmpty());
        m_folder->add(text("Draw.hovlets/Resources/late.mp4"), ClipFolder::read(clip));
        m_folder->addControlFile(text("Draw"), text("Draw"),
                                 "<hovlets locale=\"en_US\" search=\"Default\">"
                                 "<hovlet key=\"pen\" title=\"Pen\" clip=\"late.mp4\"/></hovlets>");
        const QImage picture = render({});
        QCOMPARE(picture.pixelColor(picture.rect().center()), QColor(Qt::white));
        QVERIFY(picture.height() > 200);
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

    void shouldNotShowRemainsOfLargerPopups_data()
    {
        QTest::addColumn<QString>("scale");
        for (const char *scale : { "1.1", "1.25", "1.33", "1.75" })
            QTest::newRow(scale) << text(scale);
    }

    /// At these scales, popups may cover only parts of the pixels at their edges.
    void shouldNotShowRemainsOfLargerPopups()
    {
        QFETCH(QString, scale);
        QByteArray entries;
        for (int lines = 9; lines > 0; --lines) {
            entries += "<hovlet key=\"" + QByteArray::number(9 - lines) + "\" title=\"A\">"
                    + ("<p>" + QByteArray("Long ").repeated(9 * lines - 8) + "</p>").repeated(lines)
                    + "</hovlet>";
        }
        m_folder->addControlFile(text("Sizes"), text("Sizes"),
                                 "<hovlets locale=\"en_US\" search=\"Default\">" + entries
                                         + "</hovlets>");
        const QStringList options { m_folder->path(), text("--scale"), scale };
        const QString all = m_pictures->filePath(text("all"));
        const ToolRun together(
                QStringList { text("render"), text("--all"), text("--output-dir"), all } + options);
        QCOMPARE(together.error, QByteArray());
        for (int i = 0; i < 9; ++i) {
            const QString key = QString::number(i);
            const QString file = m_pictures->filePath(text("alone.png"));
            const ToolRun alone(QStringList { text("render"), key, text("-o"), file } + options);
            QCOMPARE(alone.error, QByteArray());
            const QImage expected(file);
            QVERIFY(!expected.isNull());
            QCOMPARE(QImage(all + text("/%1.png").arg(key)), expected);
        }
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

        // At another scale, the layout is the same.
        const QString large = m_pictures->filePath(text("large.png"));
        const ToolRun twice({ text("render"), text("--all"), m_folder->path(), text("-o"), large,
                              text("--scale"), text("2") });
        QCOMPARE(twice.status, 0);
        const QSize difference = QImage(large).size() - 2 * sheet.size();
        QVERIFY(qAbs(difference.width()) <= 8 && qAbs(difference.height()) <= 8);
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
