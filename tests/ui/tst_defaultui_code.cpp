// SPDX-License-Identifier: Apache-2.0
#include "DefaultUiLooksTest.h"
#include "TestMain.h"
#include "Text.h"

#include <QtQml/QQmlContext>

#include <algorithm>
#include <limits>
#include <numeric>

using namespace Hovlets;

/// Tests the grounds of code and keys within the texts of the default user interface.
class tst_DefaultUiCode : public DefaultUiLooksTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        DefaultUiLooksTest::init();
        setColours(Qt::white, Qt::black, Qt::blue);
    }

    void shouldHaveRoundCorners_data()
    {
        QTest::addColumn<QByteArray>("children");
        QTest::addColumn<QColor>("base");
        QTest::addColumn<QColor>("text");
        const auto row = [](const char *name, const QByteArray &children, bool isDark = false) {
            QTest::newRow(name) << children << QColor(isDark ? 0x2a2e32 : 0xffffff)
                                << QColor(isDark ? Qt::white : Qt::black);
        };
        row("code", paragraph("Call <code>HHH</code>."));
        row("key", paragraph("Hold <kbd>HHH</kbd>."));
        row("sample", paragraph("Says <samp>HHH</samp>."));
        row("fixed width", paragraph("Type <tt>HHH</tt>."));
        row("dark", paragraph("Call <code>HHH</code>."), true);
        row("list", "<ul><li><![CDATA[Call <code>HHH</code>]]></li></ul>");
        row("table", "<table><tr><td><![CDATA[<code>HHH</code>]]></td><td>A</td></tr></table>");
        row("note", "<note><![CDATA[Call <code>HHH</code>.]]></note>");
        row("dark warning", "<warning><![CDATA[Call <code>HHH</code>.]]></warning>", true);
        row("heading", "<h2><![CDATA[Of <code>HHH</code>]]></h2>");
    }

    void shouldHaveRoundCorners()
    {
        QFETCH(QByteArray, children);
        QFETCH(QColor, base);
        QFETCH(QColor, text);
        setColours(base, text, Qt::blue);
        showEntry("title=\"A\"", children);
        const QList<QRect> grounds = places();
        QCOMPARE(grounds.size(), 1);
        const QRect ground = grounds.first();
        const QImage image = m_bench->grab();
        const QColor around = image.pixelColor(ground.topLeft() - QPoint(1, 1));
        const QColor middle = image.pixelColor(ground.left() + 1, ground.center().y());
        QVERIFY(middle != around);
        QVERIFY(DefaultUiBench::contrast(text, middle) >= 4.5);
        for (const QPoint &corner :
             { ground.topLeft(), ground.topRight(), ground.bottomLeft(), ground.bottomRight() }) {
            QVERIFY(distance(image.pixelColor(corner), around)
                    < distance(image.pixelColor(corner), middle));
        }
    }

    void shouldSurroundCodeAlone_data()
    {
        QTest::addColumn<QByteArray>("children");
        QTest::addColumn<int>("least");
        const QByteArray words = QByteArray("red words ").repeated(7);
        const QByteArray code = "<code>HHH</code>";
        const QByteArray hebrew("\u05d0\u05d1\u05d2\u05d3");
        const auto row = [](const char *name, const QByteArray &source, int least = 1) {
            QTest::newRow(name) << paragraph(blackCode(source)) << least;
        };
        row("between words", "red " + code + " red");
        row("at the start", code + " red");
        row("at the end", "red " + code);
        row("one letter", "red <code>i</code> red");
        row("without spaces", "red(" + code + ")red");
        row("no-break spaces", "red&nbsp;and\u00a0red " + code + "&nbsp;red&#160;red " + code, 2);
        row("no-break space inside", "red <code>H&nbsp;H\u00a0H</code> red " + code, 2);
        row("nested", "red <code>H <kbd>HHH</kbd> H</code> red");
        row("two", "red " + code + code + " red", 2);
        row("line break", "red<br>" + code + "<br>red");
        row("line break inside", "red <code>HHH<br>HHH</code> red", 2);
        row("wraps", words + "<code>" + QByteArray("HHH H ").repeated(20) + "</code>" + words, 3);
        row("long word", words + "<code>" + QByteArray("H").repeated(90) + "</code> red", 3);
        row("list", "<ul><li>red " + code + " red</li><li>" + code + "</li></ul>", 2);
        row("many", (code + " red ").repeated(120), 120);
        row("link", "red <a href=\"a/b\">" + code + "</a> red");
        row("in letters from right to left",
            hebrew + " " + code + " " + hebrew + " <code>HH HHHHHH</code> " + hebrew, 2);
        row("letters from right to left", "red <code>" + hebrew + " " + hebrew + "</code> red");
        row("both directions", "red <code>HHH " + hebrew + " HHH</code> red");
        row("wraps from right to left",
            (hebrew + " ").repeated(9) + "<code>" + (hebrew + " H ").repeated(12) + "</code> "
                    + hebrew,
            2);
        for (const QByteArray &before : { QByteArray("red"), hebrew }) {
            const QByteArray cell =
                    "<td><![CDATA[" + blackCode(before + ' ' + code + ' ' + before) + "]]></td>";
            const QByteArray cells = "<tr>" + cell + cell + "</tr>";
            QTest::newRow(before == hebrew ? "table from right to left" : "table")
                    << "<table>" + cells + cells + "</table>" << 4;
        }
    }

    void shouldSurroundCodeAlone()
    {
        QFETCH(QByteArray, children);
        QFETCH(int, least);
        setColours(Qt::white, Red, Qt::blue);
        for (const auto direction : { Qt::LeftToRight, Qt::RightToLeft }) {
            QApplication::setLayoutDirection(direction);
            showEntry("", children);
            const QList<QRect> grounds = places();
            QVERIFY(grounds.size() >= least);
            checkInk(grounds);
        }
    }

    void shouldHaveOneGroundForEachLine()
    {
        showEntry("title=\"A\"",
                  paragraph("<code>" + QByteArray("HHH H ").repeated(30) + "</code>"));
        const QList<QRect> grounds = places();
        QVERIFY(grounds.size() > 3);
        for (int i = 1; i < grounds.size(); ++i)
            QVERIFY(grounds.at(i).top() > grounds.at(i - 1).bottom() + 1);
    }

    void shouldNotTouchInFontsWithHighLines()
    {
        showEntry("title=\"A\"",
                  paragraph("<code>" + QByteArray("HHH H ").repeated(30) + "</code>"));
        auto *theme = m_bench->root()->property("theme").value<QObject *>();
        theme->setProperty("lineHeight", 1);
        theme->setProperty("leading", 0);
        const QList<QRect> grounds = places();
        QVERIFY(grounds.size() > 3);
        for (int i = 1; i < grounds.size(); ++i)
            QVERIFY(grounds.at(i).top() > grounds.at(i - 1).bottom() + 1);
    }

    void shouldStayWithinTheText()
    {
        showEntry("title=\"A\"",
                  paragraph("<code>" + QByteArray("HHH H ").repeated(30) + "</code>"));
        const QRectF words = m_bench->place(m_bench->item("paragraph"));
        const QList<QRect> grounds = places();
        QVERIFY(grounds.size() > 3);
        for (const QRect &ground : grounds)
            QVERIFY(words.contains(QRectF(ground)));
    }

    void shouldHaveNoGroundWithoutCode()
    {
        showEntry(
                "title=\"A\"",
                paragraph("a<code></code> b <code> </code> c <kbd><b> </b></kbd> <code>H</code>"));
        QCOMPARE(places().size(), 1);
    }

    void shouldUnderlineOnlyTheLettersOfLinks()
    {
        showEntry("title=\"A\"", paragraph("See <a href=\"a/b\"><code>HHH</code></a>."));
        const QRect ground = places().value(0);
        QVERIFY(ground.isValid());
        const QImage image = m_bench->grab();
        const auto isUnderlined = [&](int x) {
            for (int y = ground.top(); y <= ground.bottom(); ++y) {
                const QColor pixel = image.pixelColor(x, y);
                if (pixel.blue() - pixel.red() > 60)
                    return true;
            }
            return false;
        };
        QVERIFY(isUnderlined(ground.center().x()));
        for (const int x : { ground.left(), ground.left() + 1, ground.right() - 1, ground.right() })
            QVERIFY(!isUnderlined(x));
    }

    void shouldReadFromLeftToRightInAnyText_data()
    {
        QTest::addColumn<QByteArray>("code");
        for (const char *code :
             { "--force", "C++", "$HOME/.x", "rm -rf *", "-64", "(a", "<b>-</b>a-" })
            QTest::newRow(code) << QByteArray(code);
    }

    void shouldReadFromLeftToRightInAnyText()
    {
        QFETCH(QByteArray, code);
        const QByteArray arabic("\u0645\u0644\u0627\u062d\u0638\u0629");
        const auto picture = [&](const QByteArray &around) {
            showEntry("", paragraph(around + " <code>" + code + "</code> " + around));
            const QRect ground = places().value(0);
            return m_bench->grab().copy(ground.adjusted(2, 0, -2, 0));
        };
        const QImage expected = picture("red");
        QVERIFY(!expected.isNull());
        for (const auto direction : { Qt::LeftToRight, Qt::RightToLeft }) {
            QApplication::setLayoutDirection(direction);
            QVERIFY(looksLike(picture(arabic), expected));
        }
    }

    void shouldLeaveTheDirectionOfTheTextAsItIs()
    {
        // Text that begins with code without letters has the direction of its first letter.
        const QByteArray hebrew("\u05d0\u05d1\u05d2\u05d3");
        setColours(Qt::white, Red, Qt::blue);
        showEntry("", paragraph(blackCode("<code>***</code> " + hebrew.repeated(3))));
        QCOMPARE(places().size(), 1);
        const QRectF words = m_bench->place(m_bench->item("paragraph"));
        QVERIFY(places().first().left() > words.left() + places().first().width());
    }

    void shouldFollowTheWidth()
    {
        setColours(Qt::white, Red, Qt::blue);
        showEntry("title=\"A\"", paragraph(blackCode("red <code>HHH HHH HHH HHH HHH</code> red")));
        QCOMPARE(places().size(), 1);
        m_bench->item("paragraph")->parentItem()->setWidth(90);
        const QList<QRect> grounds = places();
        QVERIFY(grounds.size() > 1);
        checkInk(grounds);
    }

    void shouldFollowTheFont()
    {
        setColours(Qt::white, Red, Qt::blue);
        showEntry("title=\"A\"", paragraph(blackCode("red <code>HHH</code> red")));
        const QRect before = places().value(0);
        setPixelSize(3 * QFontInfo(m_font).pixelSize());
        QTRY_VERIFY(places().value(0).width() > 2 * before.width());
        m_bench->settle();
        checkInk(places());
    }

    void shouldHaveTheFontOfTheDesktopForCode()
    {
        showEntry("title=\"A\"", paragraph("<code>HHH</code>") + "<pre>HHH</pre>");
        auto *theme = m_bench->root()->property("theme").value<QObject *>();
        auto *desktop = m_bench->view()
                                ->rootContext()
                                ->contextProperty(QStringLiteral("hovletTheme"))
                                .value<QObject *>();
        const QString family = desktop->property("fixedFont").value<QFont>().family();
        QCOMPARE(theme->property("codeFont").value<QFont>().family(), family);
        QVERIFY(m_bench->item("paragraph")
                        ->property("text")
                        .toString()
                        .contains(QStringLiteral("font-family: \"%1\";").arg(family)));
    }

    void shouldLookForCodeOnlyInTextsThatHaveSome()
    {
        showEntry("title=\"A\" shortcut=\"F1\"",
                  "<p>Text</p>" + paragraph("<small>small</small> <a href=\"a/b\">link</a>")
                          + "<h2>Heading</h2><note>Note</note><ul><li>Item</li></ul>");
        QCOMPARE(editorsIn(m_bench->root()), 0);
        showEntry("title=\"A\"", "<p>Text</p>" + paragraph("<code>HHH</code>"));
        QCOMPARE(editorsIn(m_bench->root()), 1);
    }

private:
    static constexpr QRgb Red = 0xffd00000;

    static QByteArray paragraph(const QByteArray &source)
    {
        return "<p><![CDATA[" + source + "]]></p>";
    }

    /// The same with code in black, which checkInk() expects.
    static QByteArray blackCode(QByteArray source)
    {
        source.replace("<code>", "<code><span style=\"color:#000000\">");
        return source.replace("</code>", "</span></code>");
    }

    static int distance(const QColor &a, const QColor &b)
    {
        return qAbs(a.red() - b.red()) + qAbs(a.green() - b.green()) + qAbs(a.blue() - b.blue());
    }

    /// How much ink is in each column.
    static QList<int> columns(const QImage &image)
    {
        QList<int> columns;
        for (int x = 0; x < image.width(); ++x) {
            columns += 0;
            for (int y = 0; y < image.height(); ++y)
                columns.last() += 255 - image.pixelColor(x, y).green();
        }
        const int ground = *std::min_element(columns.cbegin(), columns.cend());
        for (int &column : columns)
            column -= ground;
        return columns;
    }

    /// Whether the letters are the same, up to a pixel to the left or to the right.
    static bool looksLike(const QImage &image, const QImage &expected)
    {
        const QList<int> inks = columns(image);
        const QList<int> wanted = columns(expected);
        int least = std::numeric_limits<int>::max();
        for (const int shift : { -1, 0, 1 }) {
            int difference = 0;
            for (int x = 0; x < wanted.size(); ++x)
                difference += qAbs(wanted.at(x) - inks.value(x + shift));
            least = qMin(least, difference);
        }
        return least < std::accumulate(wanted.cbegin(), wanted.cend(), 0) / 2;
    }

    static int editorsIn(const QQuickItem *item)
    {
        int editors = item->inherits("QQuickTextEdit") ? 1 : 0;
        const QList<QQuickItem *> children = item->childItems();
        for (const QQuickItem *child : children)
            editors += editorsIn(child);
        return editors;
    }

    /// The places of all grounds in the view.
    QList<QRect> places()
    {
        QList<QRect> places;
        const QList<QQuickItem *> grounds = m_bench->items(text("codeGround"));
        for (const QQuickItem *ground : grounds)
            places += m_bench->place(ground).toRect();
        return places;
    }

    /// Checks that black letters are on \a grounds, and red ones are not.
    void checkInk(const QList<QRect> &grounds)
    {
        const QImage image = m_bench->grab();
        const QRect area =
                m_bench->place(m_bench->item("paragraph")).toRect().intersected(image.rect());
        bool isBlackOn = false;
        bool isRedOff = false;
        for (int y = area.top(); y <= area.bottom(); ++y) {
            for (int x = area.left(); x <= area.right(); ++x) {
                const QColor pixel = image.pixelColor(x, y);
                const bool isOnGround =
                        std::any_of(grounds.cbegin(), grounds.cend(),
                                    [&](const QRect &ground) { return ground.contains(x, y); });
                const bool isRed = pixel.red() > 180 && pixel.green() < 100;
                const bool isBlack = pixel.red() < 100;
                isBlackOn |= isBlack && isOnGround;
                isRedOff |= isRed && !isOnGround;
                if ((isRed && isOnGround) || (isBlack && !isOnGround)) {
                    QFAIL(qPrintable(
                            QStringLiteral("%1 at %2, %3").arg(pixel.name()).arg(x).arg(y)));
                }
            }
        }
        QVERIFY(isBlackOn);
        QVERIFY(isRedOff);
    }
};

HOVLETS_TEST_MAIN(tst_DefaultUiCode)

#include "tst_defaultui_code.moc"
