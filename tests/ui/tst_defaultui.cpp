// SPDX-License-Identifier: Apache-2.0
#include "DefaultUiTest.h"
#include "TestMain.h"

#include <QtCore/QBuffer>
#include <QtCore/QPointer>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>

using namespace Hovlets;

/// Tests what the default user interface shows of an entry, and what users can do with it.
class tst_DefaultUi : public DefaultUiTest
{
    Q_OBJECT

private Q_SLOTS:
    void shouldShowTitleShortcutParagraphsAndLinks()
    {
        showEntry("title=\"Save\" shortcut=\"Ctrl+S\"",
                  "<p>First</p><text>Second</text><link href=\"http://a.example/\">A</link>"
                  "<link href=\"docs/b.html\"/>");
        QCOMPARE(m_bench->texts("title"), list({ "Save" }));
        QCOMPARE(m_bench->texts("shortcut"), list({ "Ctrl+S" }));
        QCOMPARE(m_bench->texts("paragraph"), list({ "First", "Second" }));
        QCOMPARE(m_bench->texts("link"), list({ "A", "docs/b.html" }));
    }

    void shouldShowStructure()
    {
        showEntry("",
                  "<h2>Heading</h2><ul><li>Item</li></ul><pre>\n a\n  b\n</pre>"
                  "<note>Careful</note><warning>Stop</warning>");
        QCOMPARE(m_bench->texts("heading"), list({ "Heading" }));
        QCOMPARE(m_bench->texts("paragraph").size(), 1);
        QVERIFY(m_bench->texts("paragraph")
                        .constFirst()
                        .contains(QLatin1String("<ul><li>Item</li></ul>")));
        const QQuickItem *code = m_bench->item("code");
        QCOMPARE(code->property("source").toString(), QStringLiteral("a\n b"));
        QCOMPARE(code->mapToItem(nullptr, QPointF()).x(),
                 m_bench->item("heading")->mapToItem(nullptr, QPointF()).x());
        const QQuickItem *note = m_bench->item("note");
        const QQuickItem *warning = m_bench->item("warning");
        QVERIFY(note->height() > code->height() / 2);
        const qreal lowerEdge = note->mapToItem(nullptr, QPointF(0, note->height())).y();
        QVERIFY(warning->mapToItem(nullptr, QPointF()).y() > lowerEdge);
    }

    void shouldTakeTheTitleFromAChildToo()
    {
        showEntry("", "<title>\n  From a\n child </title><p>Text</p>");
        QCOMPARE(m_bench->texts("title"), list({ "From a child" }));
        QCOMPARE(m_bench->texts("paragraph"), list({ "Text" }));
    }

    void shouldPreferTheTitleOfTheAttribute()
    {
        showEntry("title=\"Attribute\"", "<title>Child</title>");
        QCOMPARE(m_bench->texts("title"), list({ "Attribute" }));
        QCOMPARE(m_bench->texts("paragraph"), QStringList());
    }

    void shouldShowTheKeyOfAnEntryWithNothingElse()
    {
        showEntry("");
        QCOMPARE(m_bench->texts("title"), list({ "key" }));
    }

    void shouldShowTheTextOfUnknownElements()
    {
        showEntry("title=\"T\"",
                  "Own <section>Outer<p>Inner</p><p>Press <b>Shift</b></p></section>");
        QCOMPARE(m_bench->texts("paragraph"), list({ "Own", "Outer", "Inner", "Press Shift" }));
    }

    void shouldShowMarkupAndPlainText_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("format");
        QTest::addColumn<QString>("shown");
        const auto row = [](const char *name, const char *content, const char *format,
                            const char *shown) {
            QTest::newRow(name) << QByteArray(content) << QString::fromUtf8(format)
                                << QString::fromUtf8(shown);
        };
        row("plain", "some text", "plain", "some text");
        row("white space", "  some\n\ttext ", "plain", "some text");
        row("brackets", "a &lt; b &gt; c", "plain", "a < b > c");
        row("ampersand", "Q&amp;A &amp; more", "plain", "Q&A & more");
        row("foreign tag", "an &lt;html> file", "plain", "an <html> file");
        row("bold", "<![CDATA[a <b>b</b> c]]>", "styled", "a <b>b</b> c");
        row("escaped", "a &lt;i>b&lt;/i>", "styled", "a <i>b</i>");
        row("emphasis", "<![CDATA[<em>b</em>]]>", "styled", "<i>b</i>");
        row("code", "<![CDATA[<code>b</code>]]>", "rich", "<code>b</code>");
        row("entity", "<![CDATA[a &lt; b]]>", "styled", "a &lt; b");
        row("stray bracket", "<![CDATA[a < b <b>c</b> <html>]]>", "styled",
            "a &lt; b <b>c</b> &lt;html>");
        row("list", "<![CDATA[<ul><li>a</li></ul>]]>", "rich", "<ul><li>a</li></ul>");
    }

    void shouldShowMarkupAndPlainText()
    {
        QFETCH(QByteArray, content);
        showEntry("", "<p>" + content + "</p>");
        QQuickItem *paragraph = m_bench->item("paragraph");
        QVERIFY(paragraph);
        QTEST(paragraph->property("format").toString(), "format");
        QTEST(paragraph->property("source").toString(), "shown");
    }

    void shouldOpenALinkThatIsClicked()
    {
        showEntry("", "<link href=\"http://a.example/x\">A</link><link href=\"docs/b\">B</link>");
        m_bench->click(m_bench->items(QStringLiteral("link")).value(1));
        m_bench->click(m_bench->item("link"));
        QCOMPARE(m_bench->host.opened.size(), 2);
        QCOMPARE(m_bench->host.opened.at(0), qMakePair(HVFileResource, QStringLiteral("docs/b")));
        QCOMPARE(m_bench->host.opened.at(1),
                 qMakePair(HVUrlResource, QStringLiteral("http://a.example/x")));
    }

    void shouldOpenALinkInsideAText_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("styled") << QByteArray("see <a href=\"docs/a\">this page</a>.");
        QTest::newRow("rich") << QByteArray("see <code>x</code> <a href=\"docs/a\">this page</a>.");
    }

    void shouldOpenALinkInsideAText()
    {
        QFETCH(QByteArray, content);
        showEntry("", "<p><![CDATA[" + content + "]]></p>");
        const QPointF position = m_bench->linkPosition(m_bench->item("paragraph"));
        QVERIFY(!position.isNull());
        QTest::mouseClick(m_bench->view(), Qt::LeftButton, {}, position.toPoint());
        QCOMPARE(m_bench->host.opened.size(), 1);
        QCOMPARE(m_bench->host.opened.first().second, QStringLiteral("docs/a"));
    }

    void shouldShowLinksToTopicsOnlyWhileTheyCanBeOpened_data()
    {
        QTest::addColumn<bool>("available");
        QTest::newRow("available") << true;
        QTest::newRow("not available") << false;
    }

    void shouldShowLinksToTopicsOnlyWhileTheyCanBeOpened()
    {
        QFETCH(bool, available);
        make("",
             "<link href=\"Topic\">T</link><link href=\"docs/file\">F</link>"
             "<p><![CDATA[see <a href=\"Topic\">the topic</a>]]></p>");
        m_bench->context().set(HVKeyDocumentationEnabled, available);
        QVERIFY(m_bench->show());
        QCOMPARE(m_bench->texts("link"), available ? list({ "T", "F" }) : list({ "F" }));
        QCOMPARE(!m_bench->linkPosition(m_bench->item("paragraph")).isNull(), available);
    }

    void shouldShowAnImageOfTheResources_data()
    {
        QTest::addColumn<QString>("file");
        for (const char *file : { "a.png", "sub folder/a b.png", "50%.png", "a#1?.png", "ä.png" })
            QTest::newRow(file) << QString::fromUtf8(file);
    }

    void shouldShowAnImageOfTheResources()
    {
        QFETCH(QString, file);
        make("", "<img src=\"" + file.toUtf8() + "\"/>");
        addImage(file, QSize(40, 30));
        QVERIFY(m_bench->show());
        const QQuickItem *image = m_bench->item("image");
        QVERIFY(image);
        QCOMPARE(image->size(), QSizeF(40, 30));
        // Another thread decodes it.
        QTRY_COMPARE(m_bench->grab().pixelColor(m_bench->place(image).center().toPoint()),
                     QColor(Qt::red));
    }

    void shouldScaleALargeImageToTheWidth()
    {
        make("", "<img src=\"large.png\"/>");
        addImage(QStringLiteral("large.png"), QSize(3000, 300));
        QVERIFY(m_bench->show());
        const QQuickItem *image = m_bench->item("image");
        QVERIFY(image);
        QVERIFY(m_bench->root()->width() < 1000);
        QVERIFY(m_bench->place(image).right() < m_bench->root()->width());
        QVERIFY(qAbs(image->height() - image->width() / 10) <= 1);
    }

    void shouldLeaveNoHoleForAMissingImage()
    {
        showEntry("", "<p>A</p><p>B</p>");
        const qreal height = m_bench->root()->height();
        cleanup();
        showEntry("", "<p>A</p><img src=\"missing.png\"/><img/><p>B</p>");
        QVERIFY(!m_bench->item("image"));
        QCOMPARE(m_bench->root()->height(), height);
    }

    void shouldShowTheDescriptionOfAMissingImage()
    {
        showEntry("", "<img src=\"missing.png\" alt=\"A picture\"/>");
        QCOMPARE(m_bench->texts("paragraph"), list({ "A picture" }));
    }

    void shouldReplaceADamagedImageByItsDescription()
    {
        // The header is sound, so the popup reserves space for the picture.
        QByteArray picture;
        QBuffer buffer(&picture);
        buffer.open(QIODevice::WriteOnly);
        QVERIFY(QImage(90, 60, QImage::Format_RGB32).save(&buffer, "png"));
        make("", "<img src=\"damaged.png\" alt=\"A picture\"/><p>A</p>");
        m_bench->folder.add(QStringLiteral("Test.hovlets/Resources/damaged.png"),
                            picture.left(picture.size() / 2));
        QVERIFY(m_bench->show());
        QVERIFY(m_bench->item("image"));
        QTRY_COMPARE(m_bench->texts("replacement"), list({ "A picture" }));
        QCOMPARE(m_bench->item("image")->height(), 60.0); // what follows stays where it is
    }

    void shouldTakeNoSpaceForAClip()
    {
        make("title=\"T\" clip=\"a.mp4\"", "<p>A</p>");
        QVERIFY(m_bench->show());
        const qreal height = m_bench->root()->height();
        m_bench->folder.add(QStringLiteral("Test.hovlets/Resources/a.mp4"), "clip");
        m_bench->host.popup()->hide();
        QVERIFY(m_bench->show());
        QCOMPARE(m_bench->root()->height(), height);
    }

    void shouldTranslateInTheContextOfTheKey()
    {
        make("title=\"Save\"", "<p>Some\n text</p><p>Unknown</p>");
        m_bench->host.translation = [](const QString &text, const QString &context) {
            return text == QLatin1String("Unknown") ? QString() : context + QLatin1Char('/') + text;
        };
        QVERIFY(m_bench->show());
        QCOMPARE(m_bench->texts("title"), list({ "key/Save" }));
        QCOMPARE(m_bench->texts("paragraph"), list({ "key/Some text", "Unknown" }));
    }

    void shouldFillPlaceholders()
    {
        make("title=\"Save %(name)s\" shortcut=\"%(shortcut)s\"",
             "<p>Plain %(name)s %(unknown)s</p><p><![CDATA[<b>Markup</b> %(name)s]]></p>");
        m_bench->host.manager()->setGlobalProperty(QStringLiteral("name"), QStringLiteral("<b>&"));
        m_bench->host.manager()->setGlobalProperty(QStringLiteral("shortcut"),
                                                   QStringLiteral("F2"));
        QVERIFY(m_bench->show());
        QCOMPARE(m_bench->texts("title"), list({ "Save <b>&" }));
        QCOMPARE(m_bench->texts("shortcut"), list({ "F2" }));
        QCOMPARE(m_bench->texts("paragraph"),
                 list({ "Plain <b>& %(unknown)s", "<b>Markup</b> &lt;b>&amp;" }));
    }

    void shouldPinAndThenClose()
    {
        showEntry("title=\"Save\"");
        QPointer<HVWidget> popup = m_bench->host.popup();
        QQuickItem *root = m_bench->root();
        QVERIFY(!m_bench->item("close"));
        m_bench->click(m_bench->item("pin"));
        QVERIFY(m_bench->host.popup() != popup);
        QVERIFY(popup->view()->reserved());
        QVERIFY(DefaultUiBench::itemsOf(root, QStringLiteral("pin")).isEmpty());
        const QQuickItem *close = DefaultUiBench::itemsOf(root, QStringLiteral("close")).value(0);
        QVERIFY(close);
        const QPointF place =
                close->mapToItem(root, QPointF(close->width() / 2, close->height() / 2));
        QTest::mouseClick(popup->view(), Qt::LeftButton, {}, place.toPoint());
        QTRY_VERIFY(popup.isNull());
    }

    void shouldPressOnceWhileAKeyIsHeld()
    {
        showEntry("title=\"Save\"");
        QPointer<HVWidget> popup = m_bench->host.popup();
        HVView *view = popup->view();
        view->window()->activateWindow();
        QTRY_VERIFY(view->window()->isActiveWindow());
        view->setFocus();
        m_bench->item("pin")->forceActiveFocus();
        const auto press = [&](bool isRepeated) {
            QKeyEvent event(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, {}, isRepeated);
            QCoreApplication::sendEvent(view, &event);
        };
        press(true);
        QVERIFY(!view->reserved());
        press(false);
        QVERIFY(view->reserved());
    }

    void shouldCloseByEscapeOncePinned()
    {
        showEntry("title=\"Save\"");
        QPointer<HVWidget> popup = m_bench->host.popup();
        QTest::keyClick(m_bench->view(), Qt::Key_Escape);
        QVERIFY(popup->isVisible());
        m_bench->click(m_bench->item("pin"));
        QTRY_VERIFY(popup->windowType() == Qt::Tool);
        QTest::keyClick(popup->view(), Qt::Key_Escape);
        QTRY_VERIFY(popup.isNull());
    }

    void shouldFollowContentThatIsReplacedWhileShown()
    {
        m_bench = std::make_unique<DefaultUiBench>(
                DefaultUiBench::entry("title=\"A\" shortcut=\"F1\"",
                                      "<p>1</p><p>2</p><link href=\"a/b\"/>", "a")
                + DefaultUiBench::entry("title=\"B\"", "<p>3</p>", "b"));
        for (const char *key : { "a", "b", "a" }) {
            QVERIFY(m_bench->show(QString::fromLatin1(key)));
            m_bench->settle();
        }
        QCOMPARE(m_bench->texts("paragraph"), list({ "1", "2" }));
        QVERIFY(m_bench->show(QStringLiteral("b")));
        QCOMPARE(m_bench->texts("title"), list({ "B" }));
        QCOMPARE(m_bench->texts("shortcut"), QStringList());
        QCOMPARE(m_bench->texts("paragraph"), list({ "3" }));
        QCOMPARE(m_bench->texts("link"), QStringList());
    }

    void shouldSurviveTheLossOfItsContent()
    {
        showEntry("title=\"A\" shortcut=\"F1\"", "<p>1</p><link href=\"a/b\"/>");
        m_bench->view()->engine()->rootContext()->setContextProperty(
                QStringLiteral("hovlet"), QVariant::fromValue<QObject *>(nullptr));
        m_bench->settle();
        QCOMPARE(m_bench->texts("title"), QStringList());
        QCOMPARE(m_bench->texts("paragraph"), QStringList());
        QVERIFY(m_bench->root()->width() > 0);
        QVERIFY(m_bench->root()->height() > 0);
    }

    void shouldShowTitleShortcutAndFirstParagraphInSimpleMode()
    {
        make("title=\"Save\" shortcut=\"Ctrl+S\"", "<link href=\"a/b\"/><p>First</p><p>Second</p>");
        m_bench->context().set(HVKeySimpleMode, true);
        QVERIFY(m_bench->show());
        QCOMPARE(m_bench->texts("title"), list({ "Save" }));
        QCOMPARE(m_bench->texts("shortcut"), list({ "Ctrl+S" }));
        QCOMPARE(m_bench->texts("paragraph"), list({ "First" }));
        QCOMPARE(m_bench->texts("link"), QStringList());
        QVERIFY(!m_bench->item("pin"));
    }

private:
    static QStringList list(std::initializer_list<const char *> texts)
    {
        QStringList result;
        for (const char *text : texts)
            result += QString::fromUtf8(text);
        return result;
    }

    void addImage(const QString &file, const QSize &size)
    {
        const QString path =
                m_bench->folder.add(QStringLiteral("Test.hovlets/Resources/") + file, {});
        QImage image(size, QImage::Format_RGB32);
        image.fill(Qt::red);
        QVERIFY(image.save(path));
    }
};

HOVLETS_TEST_MAIN(tst_DefaultUi)

#include "tst_defaultui.moc"
