// SPDX-License-Identifier: Apache-2.0
#include "ClipFolder.h"
#include "DefaultUiTest.h"
#include "HVVideoComponent.h"
#include "TestMain.h"
#include "Text.h"

#include <QtCore/QBuffer>
#include <QtGui/QAccessible>
#include <QtWidgets/QToolTip>

#include <sys/stat.h>
#include <unistd.h>

using namespace Hovlets;

/// Tests the variants and captions of pictures and clips, and buttons, in the default user
/// interface. Runs on screens with one and with more pixels per unit of length.
class tst_DefaultUiMedia : public DefaultUiTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_palette = QToolTip::palette(); }

    void cleanup()
    {
        QToolTip::setPalette(m_palette);
        DefaultUiTest::cleanup();
    }

    void shouldChooseTheVariantOfAPicture_data()
    {
        QTest::addColumn<QStringList>("files"); // "suffix colour width"
        QTest::addColumn<bool>("isDark");
        QTest::addColumn<QString>("usual"); // colour, on a screen with one pixel per unit
        QTest::addColumn<QString>("dense"); // on other screens
        const QString plain = text(" red 40");
        const QString twice = text("@2x green 80");
        const QString dark = text("-dark blue 40");
        const QString darkTwice = text("-dark@2x yellow 80");
        const auto row = [](const char *name, const QStringList &files, bool isDark,
                            const char *usual, const char *dense) {
            QTest::newRow(name) << files << isDark << QString::fromLatin1(usual)
                                << QString::fromLatin1(dense);
        };
        row("light, alone", { plain }, false, "red", "red");
        row("light", { plain, twice }, false, "red", "green");
        row("light, all", { plain, twice, dark, darkTwice }, false, "red", "green");
        row("dark, alone", { plain }, true, "red", "red");
        row("dark, without dark ones", { plain, twice }, true, "red", "green");
        row("dark, one", { plain, twice, dark }, true, "blue", "blue");
        row("dark, dense only", { plain, darkTwice }, true, "red", "yellow");
        row("dark, all", { plain, twice, dark, darkTwice }, true, "blue", "yellow");
        row("damaged variants", { plain, text("@2x - 0"), text("-dark - 0") }, true, "red", "red");
    }

    void shouldChooseTheVariantOfAPicture()
    {
        QFETCH(QStringList, files);
        QFETCH(bool, isDark);
        QFETCH(QString, usual);
        QFETCH(QString, dense);
        make("title=\"T\"", "<img src=\"sub/a.b.png\" alt=\"A square\"/>");
        for (const QString &file : std::as_const(files)) {
            const QStringList parts = file.split(QLatin1Char(' '));
            addPicture(text("sub/a.b%1.png").arg(parts.at(0)), parts.at(1), parts.at(2).toInt());
        }
        if (isDark)
            setColours(QColor(0x20, 0x20, 0x20), Qt::white);
        else
            setColours(Qt::white, Qt::black);
        QVERIFY(m_bench->show());
        const QQuickItem *image = m_bench->item("image");
        QVERIFY(image);
        QCOMPARE(image->size(), QSizeF(40, 40)); // immediately
        QTRY_VERIFY(!image->property("loading").toBool());
        const QColor expected(isDense() ? dense : usual);
        QTRY_COMPARE(colourOf(image), expected);
    }

    void shouldFollowTheColoursOfThePopup()
    {
        make("title=\"T\"", "<img src=\"a.png\"/>");
        addPicture(text("a.png"), text("red"), 40);
        addPicture(text("a-dark.png"), text("blue"), 40);
        setColours(Qt::white, Qt::black);
        QVERIFY(m_bench->show());
        QTRY_COMPARE(colourOf(m_bench->item("image")), QColor(Qt::red));
        setColours(Qt::black, Qt::white);
        m_bench->view()->refreshTheme();
        QTRY_COMPARE(colourOf(m_bench->item("image")), QColor(Qt::blue));
    }

    void shouldNotFollowAVariantOutOfThePackage()
    {
        const QTemporaryDir elsewhere;
        for (const bool isConfined : { false, true }) {
            make("title=\"T\"", "<img src=\"a.png\"/>");
            m_bench->context().set(HVKeyConfineContent, isConfined);
            addPicture(text("a.png"), text("red"), 40);
            const QString target = elsewhere.filePath(text("other.png"));
            QVERIFY(picture(text("blue"), 40).save(target));
            QVERIFY(QFile::link(target, resources() + text("a-dark.png")));
            setColours(Qt::black, Qt::white);
            QVERIFY(m_bench->show());
            QTRY_COMPARE(colourOf(m_bench->item("image")), QColor(isConfined ? Qt::red : Qt::blue));
            m_bench->host.messages.clear(); // one of a refused file
        }
    }

    void shouldShowACaptionBelowAPicture()
    {
        make("title=\"T\"", "<img src=\"a.png\" alt=\"A square\" caption=\"Figure %(n)s\"/>");
        m_bench->host.manager()->setGlobalProperty(text("n"), 1);
        addPicture(text("a.png"), text("red"), 40);
        QVERIFY(m_bench->show());
        const QQuickItem *caption = m_bench->item("caption");
        QVERIFY(caption);
        QCOMPARE(m_bench->texts("caption"), QStringList(text("Figure 1")));
        QVERIFY(m_bench->place(caption).top() >= m_bench->place(m_bench->item("image")).bottom());
        QVERIFY(m_bench->place(caption).bottom() < m_bench->root()->height());
        const QAccessibleInterface *popup = QAccessible::queryAccessibleInterface(m_bench->root());
        QCOMPARE(popup->text(QAccessible::Description), text("A square\nFigure 1"));
    }

    void shouldShowAClipWithMorePixelsOnScreensThatHaveThem()
    {
        make("title=\"T\" clip=\"clip.mp4\"");
        addClip(text("clip.mp4"), text("-s 160x90 -t 0.2"));
        addClip(text("clip@2x.mp4"), text("-s 320x180 -t 0.2"));
        QVERIFY(m_bench->show());
        auto *video = qobject_cast<HVVideoComponent *>(m_bench->item("video"));
        QVERIFY(video);
        QTRY_COMPARE(video->loadProgress(), 1.0);
        QTRY_COMPARE(m_bench->item("clipPicture")->size(), QSizeF(160, 90));
        QCOMPARE(video->contentWidth(), isDense() ? 320.0 : 160.0);
    }

    void shouldShowTheCaptionOfTheTime_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QByteArray>("attribute");
        QTest::newRow("beside the clip") << text("clip.vtt") << QByteArray();
        QTest::newRow("named") << text("german.vtt") << QByteArray("captions=\"german.vtt\"");
    }

    void shouldShowTheCaptionOfTheTime()
    {
        QFETCH(QString, file);
        QFETCH(QByteArray, attribute);
        make("title=\"T\" clip=\"clip.mp4\" " + attribute, "<p>Text</p>");
        m_bench->host.manager()->setGlobalProperty(text("reducedMotion"), true);
        addClip(text("clip.mp4"), text("-s 320x180 -t 2 -r 25"));
        m_bench->folder.add(text("Test.hovlets/Resources/") + file,
                            "WEBVTT\n\n00:00.000 --> 00:00.500\nFirst\n\n"
                            "00:01.500 --> 00:03.000\n<i>Last</i> one");
        QVERIFY(m_bench->show());
        auto *video = qobject_cast<HVVideoComponent *>(m_bench->item("video"));
        QVERIFY(video);
        QTRY_COMPARE(video->loadProgress(), 1.0);
        QTRY_VERIFY(video->progress() > 0.9); // the result
        QTRY_COMPARE(caption(), text("Last one"));
        video->setPosition(5);
        QTRY_COMPARE(caption(), text("First"));
        QQuickItem *shown = m_bench->item("clipCaption");
        QVERIFY(m_bench->place(m_bench->item("clipPicture")).contains(m_bench->place(shown)));
        video->setPosition(20);
        QTRY_COMPARE(caption(), QString());
        const QAccessibleInterface *popup = QAccessible::queryAccessibleInterface(m_bench->root());
        QCOMPARE(popup->text(QAccessible::Description), text("First\nLast one\nText"));
    }

    void shouldShowCaptionsBesideManyMissingPictures_data()
    {
        QTest::addColumn<QByteArray>("attribute");
        QTest::newRow("beside the clip") << QByteArray();
        QTest::newRow("named") << QByteArray("captions=\"clip.vtt\"");
        QTest::newRow("named, missing") << QByteArray("captions=\"missing.vtt\"");
    }

    void shouldShowCaptionsBesideManyMissingPictures()
    {
        QFETCH(QByteArray, attribute);
        make("title=\"T\" clip=\"clip.mp4\" " + attribute,
             QByteArray("<img src=\"none.png\" alt=\"A\"/>").repeated(20));
        addClip(text("clip.mp4"), text("-s 160x90 -t 0.2"));
        m_bench->folder.add(text("Test.hovlets/Resources/clip.vtt"), Captions);
        QVERIFY(m_bench->show());
        const bool isMissing = attribute.contains("missing");
        QCOMPARE(description().startsWith(text("First\nA")), !isMissing);
        QCOMPARE(m_bench->complaints(), QStringList());
    }

    void shouldReadOnlyRegularFilesAsCaptions()
    {
        const auto showCaptions = [this](bool isPipe) {
            make("title=\"T\" clip=\"clip.mp4\" captions=\"a.vtt\"", "<p>Text</p>");
            addClip(text("clip.mp4"), text("-s 160x90 -t 0.2"));
            const QString file =
                    m_bench->folder.add(text("Test.hovlets/Resources/a.vtt"), Captions);
            if (isPipe) {
                QVERIFY(QFile::remove(file));
                QCOMPARE(::mkfifo(QFile::encodeName(file).constData(), S_IRUSR | S_IWUSR), 0);
            }
            QVERIFY(m_bench->show());
            QVERIFY(m_bench->item("video"));
            QCOMPARE(description(), text(isPipe ? "Text" : "First\nText"));
        };
        constexpr unsigned Limit = 60; // seconds; reading the pipe would wait for ever
        ::alarm(Limit);
        showCaptions(false);
        showCaptions(true);
        ::alarm(0);
    }

    void shouldAskTheHostWhenAButtonIsPressed_data()
    {
        QTest::addColumn<int>("key"); // 0: the mouse
        QTest::newRow("mouse") << 0;
        QTest::newRow("space") << int(Qt::Key_Space);
        QTest::newRow("return") << int(Qt::Key_Return);
        QTest::newRow("enter") << int(Qt::Key_Enter);
    }

    void shouldAskTheHostWhenAButtonIsPressed()
    {
        QFETCH(int, key);
        showEntry("title=\"T\"", "<p>Text</p><button href=\"app:reset\">Reset the tools</button>");
        QQuickItem *button = m_bench->item("button");
        QVERIFY(button);
        if (key == 0) {
            m_bench->click(m_bench->item("buttonFace"));
        } else {
            m_bench->view()->window()->activateWindow();
            QTRY_VERIFY(m_bench->view()->window()->isActiveWindow());
            m_bench->view()->setFocus();
            QTest::keyClick(m_bench->view(), Qt::Key_Tab);
            QTRY_VERIFY(button->hasActiveFocus());
            QTest::keyClick(m_bench->view(), Qt::Key(key));
        }
        QCOMPARE(m_bench->host.opened.size(), 1);
        QCOMPARE(m_bench->host.opened.first().first, HVUrlResource);
        QCOMPARE(m_bench->host.opened.first().second, text("app:reset"));
    }

    void shouldPressOnceWhileAKeyIsHeld_data()
    {
        QTest::addColumn<QByteArray>("child");
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("key");
        const QByteArray button = "<button href=\"app:reset\">Reset</button>";
        const QByteArray link = "<link href=\"app:reset\">Reset</link>";
        QTest::newRow("button, space") << button << text("buttonFace") << int(Qt::Key_Space);
        QTest::newRow("button, return") << button << text("buttonFace") << int(Qt::Key_Return);
        QTest::newRow("link, space") << link << text("link") << int(Qt::Key_Space);
        QTest::newRow("link, enter") << link << text("link") << int(Qt::Key_Enter);
    }

    void shouldPressOnceWhileAKeyIsHeld()
    {
        QFETCH(QByteArray, child);
        QFETCH(QString, name);
        QFETCH(int, key);
        showEntry("title=\"T\"", child);
        m_bench->view()->window()->activateWindow();
        QTRY_VERIFY(m_bench->view()->window()->isActiveWindow());
        m_bench->view()->setFocus();
        QTest::keyClick(m_bench->view(), Qt::Key_Tab);
        QTRY_VERIFY(m_bench->item(qPrintable(name))->parentItem()->hasActiveFocus());
        for (const bool isRepeated : { false, true, true }) {
            QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, {}, isRepeated);
            QCoreApplication::sendEvent(m_bench->view(), &event);
        }
        QCOMPARE(m_bench->host.opened.size(), 1);
    }

    void shouldDescribeButtonsToScreenReaders()
    {
        showEntry("title=\"T\"", "<button href=\"app:reset\">Reset the tools</button>");
        QAccessibleInterface *button =
                QAccessible::queryAccessibleInterface(m_bench->item("button"));
        QVERIFY(button);
        QCOMPARE(button->role(), QAccessible::Button);
        QCOMPARE(button->text(QAccessible::Name), text("Reset the tools"));
        QVERIFY(button->state().focusable);
        button->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QCOMPARE(m_bench->host.opened.size(), 1);
    }

    void shouldShowAButtonOnlyIfItsTopicCanOpen()
    {
        showEntry("title=\"T\"", "<button href=\"topic\">A</button><button>B</button>");
        QVERIFY(!m_bench->item("button"));
        QCOMPARE(m_bench->texts("paragraph"), QStringList(text("B")));
    }

private:
    static constexpr auto Captions = "WEBVTT\n\n00:00.000 --> 00:00.500\nFirst\n";

    /// What screen readers say of the popup.
    QString description() const
    {
        return QAccessible::queryAccessibleInterface(m_bench->root())
                ->text(QAccessible::Description);
    }

    bool isDense() { return m_bench->view()->devicePixelRatioF() > 1; }

    QString caption()
    {
        const QQuickItem *caption = m_bench->item("clipCaption");
        return caption ? caption->property("text").toString() : QString();
    }

    QString resources() const { return m_bench->folder.path() + text("/Test.hovlets/Resources/"); }

    static QImage picture(const QString &colour, int side)
    {
        QImage image(side, side, QImage::Format_RGB32);
        image.fill(QColor(colour));
        return image;
    }

    /// Adds a picture of one colour, or a damaged file for a side of 0.
    void addPicture(const QString &name, const QString &colour, int side)
    {
        QBuffer file;
        if (side > 0)
            picture(colour, side).save(&file, "PNG");
        m_bench->folder.add(text("Test.hovlets/Resources/") + name, file.data());
    }

    void addClip(const QString &name, const QString &options)
    {
        // Made once for each name.
        const QString made = m_clips.make(QStringLiteral("%1.mp4").arg(qHash(options)),
                                          text("-f lavfi -i testsrc2 -pix_fmt yuv420p ") + options);
        QVERIFY(!made.isEmpty());
        m_bench->folder.add(text("Test.hovlets/Resources/") + name, ClipFolder::read(made));
    }

    QColor colourOf(const QQuickItem *item)
    {
        const QImage image = m_bench->grab();
        return image.pixelColor(
                (m_bench->place(item).center() * image.devicePixelRatio()).toPoint());
    }

    static void setColours(const QColor &base, const QColor &text)
    {
        QPalette palette;
        palette.setColor(QPalette::ToolTipBase, base);
        palette.setColor(QPalette::ToolTipText, text);
        QToolTip::setPalette(palette);
    }

    QPalette m_palette;
    ClipFolder m_clips;
};

HOVLETS_TEST_MAIN(tst_DefaultUiMedia)
#include "tst_defaultui_media.moc"
