// SPDX-License-Identifier: Apache-2.0
#include "DefaultUiTest.h"
#include "TestMain.h"
#include "Text.h"

#include <QtGui/QAccessible>

using namespace Hovlets;

/// Tests how the keyboard and screen readers reach the links within the texts of a popup.
class tst_DefaultUiLinks : public DefaultUiTest
{
    Q_OBJECT

private Q_SLOTS:
    void shouldReachEachLinkInReadingOrder()
    {
        const auto link = [](const char *target) {
            return QByteArray("<a href=\"http://") + target + "/\">" + target + "</a>";
        };
        open("<p><![CDATA[One " + link("a") + " and " + link("b") + ".]]></p><ul><li><![CDATA["
             + link("c") + "]]></li><li>Plain</li><li><![CDATA[Go to " + link("d")
             + "]]></li></ul><table><tr><th>Cell</th><td><![CDATA[" + link("e")
             + "]]></td></tr></table><note><![CDATA[See " + link("f")
             + "]]></note><link href=\"http://g/\">g</link>");
        QStringList expected;
        for (const char *target : { "a", "b", "c", "d", "e", "f", "g" })
            expected += QStringLiteral("http://%1/").arg(text(target));
        QStringList reached;
        for (int i = 0; i < expected.size(); ++i) {
            press(Qt::Key_Tab);
            reached += follow(i % 2 == 0 ? Qt::Key_Return : Qt::Key_Space);
        }
        QCOMPARE(reached, expected);
        reached = QStringList(follow(Qt::Key_Enter));
        for (int i = 1; i < expected.size(); ++i) {
            QTest::keyClick(m_bench->view(), Qt::Key_Backtab, Qt::ShiftModifier);
            reached.prepend(follow(Qt::Key_Enter));
        }
        QCOMPARE(reached, expected);
    }

    void shouldDrawARingAroundTheFocusedLink_data()
    {
        QTest::addColumn<QByteArray>("children");
        QTest::addColumn<int>("lines");
        const QByteArray words = QByteArray("many words ").repeated(10);
        const auto row = [](const char *name, const QByteArray &source, int lines) {
            QTest::newRow(name) << QByteArray("<p><![CDATA[") + source + "]]></p>" << lines;
        };
        row("styled", "Text <a href=\"http://a/\">link</a> more", 1);
        row("rich", "<ul><li>Text <a href=\"http://a/\">link</a> more</li></ul>", 1);
        row("with code", "Text <a href=\"http://a/\"><code>code</code></a> more", 1);
        row("between code", "<code>One</code> <a href=\"http://a/\">a <tt>b</tt> c</a>", 1);
        row("one letter", "Text <a href=\"http://a/\">i</a> more", 1);
        row("at the start", "<a href=\"http://a/\">Link</a> more", 1);
        row("lines below", words + words + "<a href=\"http://a/\">link</a>", 1);
        row("over lines", words + "<a href=\"http://a/\">" + words + "</a>", 0);
    }

    void shouldDrawARingAroundTheFocusedLink()
    {
        QFETCH(QByteArray, children);
        QFETCH(int, lines);
        open(children);
        QVERIFY(!m_bench->item("linkRing"));
        press(Qt::Key_Tab);
        const QList<QQuickItem *> rings = m_bench->items(text("linkRing"));
        if (lines > 0)
            QCOMPARE(rings.size(), lines);
        else
            QVERIFY(rings.size() > 1);
        QQuickItem *paragraph = m_bench->item("paragraph");
        const QPointF origin = m_bench->place(paragraph).topLeft();
        const auto isLink = [&](const QPointF &point) {
            QString link;
            QMetaObject::invokeMethod(paragraph, "linkAt", Q_RETURN_ARG(QString, link),
                                      Q_ARG(qreal, point.x() - origin.x()),
                                      Q_ARG(qreal, point.y() - origin.y()));
            return !link.isEmpty();
        };
        for (const QQuickItem *ring : rings) {
            const QRectF inner = m_bench->place(ring).adjusted(3, 1, -4, -2);
            QVERIFY(isLink(inner.topLeft()));
            QVERIFY(isLink(inner.bottomRight()));
            QVERIFY(!isLink(inner.topLeft() - QPointF(2, 0)));
            QVERIFY(!isLink(inner.bottomRight() + QPointF(3, 0)));
        }
        press(Qt::Key_Tab);
        QVERIFY(!m_bench->item("linkRing"));
    }

    void shouldDrawTheRingOfALineAroundItsLetters()
    {
        open("<p>Text</p><link href=\"http://a/\">Hj</link>");
        press(Qt::Key_Tab);
        const QRectF ring = m_bench->place(m_bench->item("focusRing"));
        const QImage image = m_bench->grab();
        // Whether letters or their line are in the row, between the sides of the ring.
        const auto isBlank = [&](int y) {
            const QColor base = image.pixelColor(qRound(ring.left()) + 3, y);
            for (int x = qRound(ring.left()) + 3; x < qRound(ring.right()) - 3; ++x) {
                if (image.pixelColor(x, y) != base)
                    return false;
            }
            return true;
        };
        int above = 0;
        for (int y = qRound(ring.top()) + 2; isBlank(y) && y < ring.bottom(); ++y)
            ++above;
        int below = 0;
        for (int y = qRound(ring.bottom()) - 3; isBlank(y) && y > ring.top(); --y)
            ++below;
        QVERIFY2(above >= 1 && below >= 1 && qAbs(above - below) <= 2,
                 qPrintable(QStringLiteral("%1 above, %2 below").arg(above).arg(below)));
    }

    void shouldHaveTextsOnWholePixels()
    {
        // Otherwise, lines run through the feet of letters.
        open("<p>Text</p><h2>Heading</h2><note><![CDATA[<a href=\"http://a/\">a</a>]]></note>"
             "<p>Text</p><link href=\"http://b/\">b</link><warning>Text</warning><p>Text</p>");
        for (const char *name : { "paragraph", "heading", "noteText", "link" }) {
            const QList<QQuickItem *> items = m_bench->items(text(name));
            QVERIFY(!items.isEmpty());
            for (const QQuickItem *item : items)
                QCOMPARE(m_bench->place(item).y(), qRound(m_bench->place(item).y()) * 1.0);
        }
    }

    void shouldTellLinksWithTheSameTargetApart()
    {
        open("<p><![CDATA[<a href=\"http://a/?x=1&amp;y=2\">One</a> or "
             "<a href=\"http://a/?x=1&amp;y=2\">two</a>]]></p>");
        press(Qt::Key_Tab);
        const QRectF first = m_bench->place(m_bench->item("linkRing"));
        const QString target = follow(Qt::Key_Return);
        press(Qt::Key_Tab);
        QCOMPARE(m_bench->items(text("linkRing")).size(), 1);
        QVERIFY(m_bench->place(m_bench->item("linkRing")).left() > first.right() - 6);
        QCOMPARE(follow(Qt::Key_Return), target);
        QTest::mouseClick(m_bench->view(), Qt::LeftButton, Qt::NoModifier,
                          first.center().toPoint());
        QCOMPARE(m_bench->host.opened.last().second, target);
    }

    void shouldFollowOnceWhileAKeyIsHeld()
    {
        open("<p><![CDATA[<a href=\"http://a/\">One</a>]]></p>");
        press(Qt::Key_Tab);
        for (const bool isRepeated : { false, true, true }) {
            QKeyEvent event(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, {}, isRepeated);
            QCoreApplication::sendEvent(m_bench->view(), &event);
        }
        QCOMPARE(m_bench->host.opened.size(), 1);
    }

    void shouldNameLinksToScreenReaders()
    {
        open("<p><![CDATA[See <a href=\"http://a/\">the <b>A &amp; B</b> page</a>]]></p>");
        QAccessibleInterface *link =
                QAccessible::queryAccessibleInterface(m_bench->item("textLink"));
        QVERIFY(link);
        QCOMPARE(link->role(), QAccessible::Link);
        QCOMPARE(link->text(QAccessible::Name), text("the A & B page"));
        QVERIFY(link->state().focusable);
        link->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QCOMPARE(m_bench->host.opened.size(), 1);
        QCOMPARE(m_bench->host.opened.first().second, text("http://a/"));
    }

    void shouldScrollToTheFocus()
    {
        open(QByteArray("<p>Line</p>").repeated(100)
             + "<p><![CDATA[Text <a href=\"http://a/\">link</a>]]></p>");
        press(Qt::Key_Tab);
        // The button to pin is after the text.
        QVERIFY(m_bench->item("linkRing"));
        const QRectF popup = m_bench->place(m_bench->root());
        QTRY_VERIFY(popup.contains(m_bench->place(m_bench->item("linkRing"))));
    }

    void shouldScrollByWholePixels()
    {
        const QByteArray lines = QByteArray("<p>Line</p>").repeated(100);
        open(lines + "<link href=\"http://a/\">a</link>" + lines);
        press(Qt::Key_Tab);
        const auto position = [this] {
            return m_bench->item("flickable")->property("contentY").toReal();
        };
        QTRY_VERIFY(position() > 0);
        QCOMPARE(position(), qRound(position()) * 1.0);
    }

private:
    void open(const QByteArray &children)
    {
        showEntry("title=\"Save\"", children);
        m_bench->view()->window()->activateWindow();
        QTRY_VERIFY(m_bench->view()->window()->isActiveWindow());
        m_bench->view()->setFocus();
    }

    void press(Qt::Key key) { QTest::keyClick(m_bench->view(), key); }

    /// The target that the key opens; empty if it opens none.
    QString follow(Qt::Key key)
    {
        const int before = int(m_bench->host.opened.size());
        press(key);
        return m_bench->host.opened.size() == before + 1 ? m_bench->host.opened.last().second
                                                         : QString();
    }
};

HOVLETS_TEST_MAIN(tst_DefaultUiLinks)
#include "tst_defaultui_links.moc"
