// SPDX-License-Identifier: Apache-2.0
#include "DefaultUiLooksTest.h"
#include "TestMain.h"
#include "Text.h"

#include <QtGui/QScreen>

using namespace Hovlets;

/// Tests fonts, sizes and layout of the default user interface.
class tst_DefaultUiLooks : public DefaultUiLooksTest
{
    Q_OBJECT

private Q_SLOTS:
    void shouldShowEachKeyOfAShortcut_data()
    {
        QTest::addColumn<QString>("shortcut");
        QTest::addColumn<QStringList>("keys");
        const auto row = [](const char *shortcut, const QStringList &keys) {
            QTest::newRow(shortcut) << QString::fromUtf8(shortcut) << keys;
        };
        row("P", { text("P") });
        row("Ctrl+Shift+S", { text("Ctrl"), text("Shift"), text("S") });
        row("Ctrl+K, Ctrl+S", { text("Ctrl"), text("K"), text("Ctrl"), text("S") });
        row("Ctrl++", { text("Ctrl"), text("+") });
        row("Ctrl+,", { text("Ctrl"), text(",") });
        row("+", { text("+") });
        row("\u21e7\u2318S",
            { QString::fromUtf8("\u21e7"), QString::fromUtf8("\u2318"), text("S") });
        row("Press and hold the mouse", { text("Press and hold the mouse") });
    }

    void shouldShowEachKeyOfAShortcut()
    {
        QFETCH(QString, shortcut);
        showEntry("title=\"Title\" shortcut=\"" + shortcut.toUtf8() + '"');
        QTEST(m_bench->texts("key"), "keys");
        QCOMPARE(m_bench->texts("shortcut"), QStringList(shortcut));
        qreal end = 0;
        const QList<QQuickItem *> keys = m_bench->items(text("key"));
        for (const QQuickItem *key : keys) {
            QVERIFY(m_bench->place(key).left() > end);
            end = m_bench->place(key).right();
        }
    }

    void shouldPutAHeadingCloserToWhatItIntroduces()
    {
        showEntry("title=\"A\"", "<p>Before</p><h2>Heading</h2><p>After</p>");
        const QRectF heading = m_bench->place(m_bench->item("heading"));
        const QList<QQuickItem *> paragraphs = m_bench->items(QStringLiteral("paragraph"));
        QCOMPARE(paragraphs.size(), 2);
        const qreal above = heading.top() - m_bench->place(paragraphs.at(0)).bottom();
        const qreal below = m_bench->place(paragraphs.at(1)).top() - heading.bottom();
        QVERIFY(above >= 2 * below);
    }

    void shouldBeAsFarFromTheBoxAboveAsFromTheOneBelow_data()
    {
        QTest::addColumn<QByteArray>("children");
        QTest::newRow("paragraph") << QByteArray("<p>HHH</p>");
        QTest::newRow("list") << QByteArray("<ul><li>HHH</li></ul>");
        QTest::newRow("table") << QByteArray("<table><tr><td>HHH</td></tr></table>");
    }

    void shouldBeAsFarFromTheBoxAboveAsFromTheOneBelow()
    {
        QFETCH(QByteArray, children);
        setColours(Qt::white, Qt::black, Qt::blue);
        setPixelSize(40);
        showEntry("title=\"A\"", "<pre>HHH</pre>" + children + "<pre>HHH</pre>");
        const QList<QQuickItem *> boxes = m_bench->items(QStringLiteral("code"));
        QCOMPARE(boxes.size(), 2);
        const QRectF between(m_bench->place(boxes.at(0)).bottomLeft(),
                             m_bench->place(boxes.at(1)).topRight());
        const QRect ink = inkIn(between.toRect());
        const int above = ink.top() - between.toRect().top();
        const int below = between.toRect().bottom() - ink.bottom();
        QVERIFY(qAbs(above - below) <= 5);
    }

    void shouldAlignTablesWithOtherTexts_data() { shouldMirrorRightToLeftLayouts_data(); }

    void shouldAlignTablesWithOtherTexts()
    {
        QFETCH(bool, mirrored);
        QApplication::setLayoutDirection(mirrored ? Qt::RightToLeft : Qt::LeftToRight);
        setColours(Qt::white, Qt::black, Qt::blue);
        setPixelSize(40);
        showEntry("title=\"A\"",
                  "<p>HHH</p><table><tr><td>HHH</td><td>HH</td></tr></table><ul><li>H</li></ul>");
        const QList<QQuickItem *> texts = m_bench->items(QStringLiteral("paragraph"));
        QCOMPARE(texts.size(), 3);
        const int edge = inkOf(texts.at(0), mirrored);
        QVERIFY(qAbs(inkOf(texts.at(1), mirrored) - edge) <= 1); // rounding
        // Lists are indented, marks included.
        const int indentation =
                mirrored ? edge - inkOf(texts.at(2), true) : inkOf(texts.at(2), false) - edge;
        QVERIFY(indentation > 10);
    }

    void shouldAlignCellsOfAnyScriptWithTheirColumn_data()
    {
        shouldMirrorRightToLeftLayouts_data();
    }

    void shouldAlignCellsOfAnyScriptWithTheirColumn()
    {
        QFETCH(bool, mirrored);
        QApplication::setLayoutDirection(mirrored ? Qt::RightToLeft : Qt::LeftToRight);
        setColours(Qt::white, Qt::black, Qt::blue);
        setPixelSize(40);
        showEntry("title=\"A\"",
                  "<table><tr><td>HHHHHH</td></tr><tr><td>\u05d0</td></tr><tr><td>H</td></tr></"
                  "table>");
        const QQuickItem *table = m_bench->item("paragraph");
        const int edge = inkOf(table, mirrored);
        const int height = int(table->height()) / 3;
        for (const int row : { 1, 2 })
            QVERIFY(qAbs(inkOf(table, mirrored, row * height, height) - edge) <= 8); // bearing
    }

    void shouldFollowTheFont_data()
    {
        QTest::addColumn<bool>("pixels");
        QTest::newRow("in pixels") << true;
        QTest::newRow("in points") << false;
    }

    void shouldFollowTheFont()
    {
        QFETCH(bool, pixels);
        QFont font(QStringLiteral("DejaVu Serif"));
        const auto setSize = [&](int size) {
            pixels ? font.setPixelSize(size) : font.setPointSize(size);
            QApplication::setFont(font);
        };
        setSize(9);
        showEntry("title=\"Title\" shortcut=\"F1\"",
                  "<p>" + QByteArray("word ").repeated(40) + "</p>");
        const QSizeF small = m_bench->root()->size();
        QCOMPARE(m_bench->item("paragraph")->property("font").value<QFont>().family(),
                 QStringLiteral("DejaVu Serif"));
        setSize(18);
        QTRY_VERIFY(qAbs(m_bench->root()->width() - 2 * small.width()) < 0.1 * small.width());
        for (const char *name : { "title", "paragraph", "shortcut" }) {
            const QFont shown = m_bench->item(name)->property("font").value<QFont>();
            QCOMPARE(shown.family(), QStringLiteral("DejaVu Serif"));
        }
        const auto pixelSize = [&](const char *name) {
            return QFontInfo(m_bench->item(name)->property("font").value<QFont>()).pixelSize();
        };
        QCOMPARE(pixelSize("title"), qRound(1.15 * QFontInfo(font).pixelSize()));
        QCOMPARE(pixelSize("paragraph"), QFontInfo(font).pixelSize());
        QCOMPARE(pixelSize("shortcut"), qRound(0.85 * QFontInfo(font).pixelSize()));
        QVERIFY(m_bench->item("title")->property("font").value<QFont>().weight()
                >= QFont::DemiBold);
    }

    void shouldMirrorRightToLeftLayouts_data()
    {
        QTest::addColumn<bool>("mirrored");
        QTest::newRow("left to right") << false;
        QTest::newRow("right to left") << true;
    }

    void shouldMirrorRightToLeftLayouts()
    {
        QFETCH(bool, mirrored);
        QApplication::setLayoutDirection(mirrored ? Qt::RightToLeft : Qt::LeftToRight);
        showEntry("title=\"Title\" shortcut=\"F1\"",
                  "<p>A paragraph that is wider than its title.</p><link href=\"a/b\"/>"
                  "<p><![CDATA[<tt>rich</tt>]]></p>");
        const auto start = [&](const QRectF &place) {
            return mirrored ? m_bench->root()->width() - place.right() : place.left();
        };
        const qreal title = start(m_bench->place(m_bench->item("title")));
        const qreal badge = start(m_bench->place(m_bench->item("badge")));
        const qreal pin = start(m_bench->place(m_bench->item("pin")));
        QVERIFY(title < badge);
        QVERIFY(badge < pin);
        QCOMPARE(start(m_bench->place(m_bench->item("link"))), title);
        const QList<QQuickItem *> paragraphs = m_bench->items(QStringLiteral("paragraph"));
        for (const QQuickItem *paragraph : paragraphs) {
            QCOMPARE(start(m_bench->place(paragraph)), title);
            // The letters of the short text also start at the beginning of its line.
            const QRectF place = m_bench->place(paragraph);
            QRectF firstHalf(place.topLeft(), QSizeF(place.width() / 2, place.height()));
            if (mirrored)
                firstHalf.moveRight(place.right());
            const QColor base = m_palette.color(QPalette::ToolTipBase);
            QVERIFY(m_bench->strongest(firstHalf, base) != base);
        }
    }

    void shouldPutTheShortcutBesideTheTitleWhereThereIsRoom_data()
    {
        QTest::addColumn<QByteArray>("title");
        QTest::addColumn<bool>("beside");
        QTest::newRow("short title") << QByteArray("Save") << true;
        QTest::newRow("long title") << QByteArray("Save ").repeated(10) << false;
    }

    void shouldPutTheShortcutBesideTheTitleWhereThereIsRoom()
    {
        QFETCH(QByteArray, title);
        QFETCH(bool, beside);
        showEntry("title=\"" + title + "\" shortcut=\"Ctrl+S\"");
        const QRectF titlePlace = m_bench->place(m_bench->item("title"));
        const QRectF badge = m_bench->place(m_bench->item("badge"));
        QCOMPARE(badge.left() > titlePlace.right(), beside);
        QCOMPARE(badge.top() >= titlePlace.bottom(), !beside);
    }

    void shouldBeAsWideAsItsContent()
    {
        showEntry("title=\"Undo\"");
        const qreal narrow = m_bench->root()->width();
        m_bench.reset();
        showEntry("title=\"Undo\"", "<p>" + QByteArray("word ").repeated(60) + "</p>");
        const qreal em = QFontInfo(QApplication::font()).pixelSize();
        QVERIFY(m_bench->root()->width() > 2 * narrow);
        QVERIFY(m_bench->root()->width() <= 27 * em);
        QVERIFY(narrow >= 7 * em);
    }

    void shouldKeepAllTextInside_data()
    {
        QTest::addColumn<QByteArray>("attributes");
        QTest::addColumn<QByteArray>("children");
        const QByteArray title("title=\"The title\" ");
        const QByteArray shortcut("shortcut=\"Ctrl+S\" ");
        const auto row = [](const char *name, const QByteArray &attributes,
                            const QByteArray &children = {}) {
            QTest::newRow(name) << attributes << children;
        };
        row("all", title + shortcut, "<p>Text</p><link href=\"a/b\">Link</link>");
        row("empty", "");
        row("title alone", title);
        row("shortcut alone", shortcut);
        row("no title", "", "<p>Text</p>");
        row("shortcut and text", shortcut, "<p>Text</p>");
        row("no body", title + shortcut);
        row("10,000 characters", title, "<p>" + QByteArray("word ").repeated(2000) + "</p>");
        row("long title", "title=\"" + QByteArray("word ").repeated(2000) + '"');
        row("long word", title, "<p>" + QByteArray(300, 'w') + "</p>");
        row("long word in markup", title,
            "<p><![CDATA[<code>" + QByteArray(300, 'w') + "</code>]]></p>");
        row("long word as title", "title=\"" + QByteArray(300, 'w') + "\" " + shortcut);
        row("long word as shortcut", title + "shortcut=\"" + QByteArray(300, 'w') + '"');
        row("long word as link", title, "<link href=\"a/" + QByteArray(300, 'w') + "\"/>");
        row("unknown elements", title, "<x>One<y>Two</y></x><z/>");
        row("missing image", title, "<img src=\"missing.png\"/><p>Text</p>");
        row("many links", title, QByteArray("<link href=\"a/b\">A link</link>").repeated(60));
        row("lists", title,
            "<p><![CDATA[<ul><li>One</li><li>" + QByteArray("two ").repeated(50)
                    + "</li></ul>]]></p>");
        row("other scripts", "title=\"保存\" shortcut=\"שמירה\"",
            "<p>שומר את המסמך</p><p>" + QByteArray("文書を保存します").repeated(20) + "</p>");
    }

    void shouldKeepAllTextInside()
    {
        QFETCH(QByteArray, attributes);
        QFETCH(QByteArray, children);
        for (const auto direction : { Qt::LeftToRight, Qt::RightToLeft }) {
            for (const bool simple : { false, true }) {
                QApplication::setLayoutDirection(direction);
                make(attributes, children);
                m_bench->context().set(HVKeySimpleMode, simple);
                QVERIFY(m_bench->show());
                m_bench->settle();
                checkTexts();
                QVERIFY(m_bench->root()->height()
                        <= 0.6 * QGuiApplication::primaryScreen()->availableSize().height() + 1);
                QCOMPARE(m_bench->complaints(), QStringList());
            }
        }
    }

    void shouldHaveItsSizeImmediately()
    {
        const QByteArray words = QByteArray("word ").repeated(30);
        m_bench = std::make_unique<DefaultUiBench>(
                DefaultUiBench::entry("title=\"Title\" shortcut=\"F1\"",
                                      "<p>" + words + "</p><link href=\"a/b\"/><p><![CDATA[<tt>"
                                              + words + "</tt>]]></p>",
                                      "large")
                + DefaultUiBench::entry("title=\"Title\"", {}, "small")
                + DefaultUiBench::entry("", "<p>" + words.repeated(100) + "</p>", "long"));
        for (const char *key : { "large", "small", "long", "small", "large" }) {
            QVERIFY(m_bench->show(QString::fromLatin1(key)));
            const QSizeF size = m_bench->root()->size();
            QCOMPARE(m_bench->view()->size(), size.toSize());
            QCOMPARE(m_bench->host.popup()->size(), size.toSize() + QSize(1, 1));
            m_bench->settle();
            QCOMPARE(m_bench->root()->size(), size);
            QCOMPARE(m_bench->view()->size(), size.toSize());
        }
    }

    void shouldHaveItsSizeImmediatelyAfterItWasHidden()
    {
        m_bench = std::make_unique<DefaultUiBench>(
                DefaultUiBench::entry("title=\"A title, and more\"", "<p>Text</p>", "a")
                + DefaultUiBench::entry("title=\"T\"", {}, "b"));
        QVERIFY(m_bench->show(QStringLiteral("a")));
        m_bench->settle();
        m_bench->host.popup()->hide();
        QVERIFY(m_bench->show(QStringLiteral("b")));
        QCOMPARE(m_bench->host.popup()->size(), m_bench->root()->size().toSize() + QSize(1, 1));
    }

private:
    /// The rectangle around the dark pixels in \a area.
    QRect inkIn(const QRect &area)
    {
        const QImage image = m_bench->grab();
        QRect ink;
        for (int x = area.left(); x <= area.right(); ++x) {
            for (int y = area.top(); y <= area.bottom(); ++y) {
                if (image.pixelColor(x, y).lightness() < 100)
                    ink |= QRect(x, y, 1, 1);
            }
        }
        return ink;
    }

    /// The outermost column in which \a item has a dark pixel, on the left or on the right.
    int inkOf(const QQuickItem *item, bool onTheRight)
    {
        return inkOf(item, onTheRight, 0, int(item->height()));
    }

    /// The same for \a height rows of pixels from \a top on.
    int inkOf(const QQuickItem *item, bool onTheRight, int top, int height)
    {
        const QImage image = m_bench->grab();
        QRect place = m_bench->place(item).toRect();
        place = QRect(place.x(), place.y() + top, place.width(), height);
        for (int i = 0; i < place.width(); ++i) {
            const int x = onTheRight ? place.right() - i : place.left() + i;
            for (int y = place.top(); y <= place.bottom(); ++y) {
                if (image.pixelColor(x, y).lightness() < 100)
                    return x;
            }
        }
        return -1;
    }

    /// Checks that no text leaves the popup, is cut off, or overlaps another text or the button.
    void checkTexts()
    {
        const bool scrolls = m_bench->item("scrollBar");
        const QQuickItem *pin = m_bench->item("pin");
        const QList<QQuickItem *> texts = m_bench->textItems();
        QVERIFY(!texts.isEmpty());
        QList<QRectF> places;
        for (const QQuickItem *text : texts) {
            const QRectF place = m_bench->place(text);
            QVERIFY(!text->property("truncated").toBool());
            QVERIFY(text->property("contentWidth").toReal() <= text->width() + 0.5);
            QVERIFY(text->property("contentHeight").toReal() <= text->height() + 0.5);
            QVERIFY(place.left() > 0 && place.right() < m_bench->root()->width());
            QVERIFY(place.top() > 0);
            QVERIFY(scrolls || place.bottom() < m_bench->root()->height());
            QVERIFY(!pin || !place.intersects(m_bench->place(pin)));
            for (const QRectF &other : std::as_const(places))
                QVERIFY(!place.intersects(other));
            places.append(place);
        }
        const QQuickItem *flickable = m_bench->item("flickable");
        QVERIFY(places.last().bottom()
                < flickable->y() + flickable->property("contentHeight").toReal());
    }
};

HOVLETS_TEST_MAIN(tst_DefaultUiLooks)

#include "tst_defaultui_looks.moc"
