// SPDX-License-Identifier: Apache-2.0
#include "DefaultUiTest.h"
#include "HVViewWindow.h"
#include "TestMain.h"

#include <QtGui/QScreen>
#include <QtGui/QWheelEvent>
#include <QtGui/QWindow>

using namespace Hovlets;

/// Tests content that is taller than the popup may be.
class tst_DefaultUiScrolling : public DefaultUiTest
{
    Q_OBJECT

private Q_SLOTS:
    void shouldScrollLongContent_data()
    {
        QTest::addColumn<QString>("how");
        for (const char *how : { "wheel", "wheel on the bar", "page", "slider" })
            QTest::newRow(how) << QString::fromLatin1(how);
    }

    void shouldScrollLongContent()
    {
        QFETCH(QString, how);
        m_bench = std::make_unique<DefaultUiBench>(longEntry("long") + longEntry("other"));
        QVERIFY(m_bench->show(QStringLiteral("long")));
        QVERIFY(QTest::qWaitForWindowExposed(m_bench->host.popup()));
        QQuickItem *flickable = m_bench->item("flickable");
        const QQuickItem *bar = m_bench->item("scrollBar");
        QVERIFY(bar);
        const qreal hidden = flickable->property("contentHeight").toReal() - flickable->height();
        QVERIFY(hidden > m_bench->root()->height());
        QVERIFY(qAbs(bar->property("end").toReal() - hidden) < 0.011);
        QCOMPARE(bar->property("position").toReal(), 0.0);

        const QRectF place = m_bench->place(bar);
        if (how == QLatin1String("wheel"))
            turnWheel(m_bench->place(flickable).center());
        else if (how == QLatin1String("wheel on the bar"))
            turnWheel(place.center());
        else if (how == QLatin1String("page"))
            QTest::mouseClick(m_bench->view(), Qt::LeftButton, {},
                              (place.bottomLeft() + QPointF(bar->width() / 2, -30)).toPoint());
        else
            drag(place.topLeft() + QPointF(bar->width() / 2, 30), 40);
        QTRY_VERIFY(flickable->property("contentY").toReal() > 10);
        QTRY_VERIFY(!flickable->property("moving").toBool());
        QVERIFY(qAbs(bar->property("position").toReal() - flickable->property("contentY").toReal())
                < 0.011);
        if (how == QLatin1String("page"))
            QCOMPARE(flickable->property("contentY").toReal(), flickable->height());

        QVERIFY(m_bench->show(QStringLiteral("other")));
        QCOMPARE(flickable->property("contentY").toReal(), 0.0);
        QCOMPARE(bar->property("position").toReal(), 0.0);
    }

    void shouldUseTheSpaceBelowTheButton()
    {
        m_bench = std::make_unique<DefaultUiBench>(longEntry("key"));
        QVERIFY(m_bench->show());
        const QRectF text = m_bench->place(m_bench->item("paragraph"));
        const QRectF button = m_bench->place(m_bench->item("pin"));
        QVERIFY(button.bottom() <= m_bench->item("flickable")->y() + 2);
        QVERIFY(text.right() > button.left());
        QVERIFY(text.right() < m_bench->place(m_bench->item("scrollBar")).left() + 1);
    }

    void shouldScrollByKeyboard()
    {
        m_bench = std::make_unique<DefaultUiBench>(longEntry("key"));
        QVERIFY(m_bench->show());
        m_bench->view()->window()->activateWindow();
        QTRY_VERIFY(m_bench->view()->window()->isActiveWindow());
        m_bench->view()->setFocus();
        const QQuickItem *flickable = m_bench->item("flickable");
        const auto after = [&](Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
            QTest::keyClick(m_bench->view(), key, modifiers);
            return flickable->property("contentY").toReal();
        };
        const qreal end = flickable->property("contentHeight").toReal() - flickable->height();
        QCOMPARE(after(Qt::Key_Up), 0.0);
        const qreal line = after(Qt::Key_Down);
        QVERIFY(line > 10 && line < flickable->height() / 2);
        const qreal page = after(Qt::Key_PageDown) - line;
        QVERIFY(page > flickable->height() / 2 && page < flickable->height());
        QCOMPARE(after(Qt::Key_Up), page);
        QCOMPARE(after(Qt::Key_PageUp), 0.0);
        QCOMPARE(after(Qt::Key_End), end);
        QCOMPARE(after(Qt::Key_PageDown), end);
        QCOMPARE(after(Qt::Key_Home, Qt::ControlModifier), end);
        QCOMPARE(after(Qt::Key_Home), 0.0);
    }

    void shouldNotResetThePositionToWhichItScrolled()
    {
        m_bench = std::make_unique<DefaultUiBench>(longEntry("key"));
        QVERIFY(m_bench->show());
        QQuickItem *flickable = m_bench->item("flickable");
        for (const qreal y : { 12.34, 0.29, 57.999, 100.0 }) {
            QVERIFY(flickable->setProperty("contentY", y));
            m_bench->settle();
            QCOMPARE(flickable->property("contentY").toReal(), y);
        }
    }

    void shouldNotScrollOncePinnedWhatFitsBefore()
    {
        // As high as a popup can be without scrolling.
        const qreal most = 0.6 * QGuiApplication::primaryScreen()->availableSize().height();
        int lines = 1;
        do {
            m_bench = std::make_unique<DefaultUiBench>(
                    DefaultUiBench::entry("title=\"Title\" shortcut=\"F1\"",
                                          QByteArray("<p>Line</p>").repeated(lines++)));
            QVERIFY(m_bench->show());
        } while (!m_bench->item("scrollBar"));
        m_bench = std::make_unique<DefaultUiBench>(DefaultUiBench::entry(
                "title=\"Title\" shortcut=\"F1\"", QByteArray("<p>Line</p>").repeated(lines - 2)));
        QVERIFY(m_bench->show());
        QVERIFY(!m_bench->item("scrollBar"));
        QVERIFY(m_bench->root()->height() > 0.8 * most);
        m_bench->view()->viewWindow().setTitleBar(HVViewWindow::TitleBar::Own);
        m_bench->settle();
        QVERIFY(m_bench->item("titleBar"));
        QVERIFY(!m_bench->item("scrollBar"));
    }

    void shouldNotCutWhatIsAroundTheFirstBlock()
    {
        m_bench = std::make_unique<DefaultUiBench>(longEntry("key"));
        QVERIFY(m_bench->show());
        constexpr int FocusRing = 2; // the frame of a clip is thinner
        QVERIFY(m_bench->place(m_bench->item("body")).top()
                >= m_bench->place(m_bench->item("flickable")).top() + FocusRing);
    }

    void shouldGiveTheScrollBarAColumnOfItsOwn()
    {
        m_bench = std::make_unique<DefaultUiBench>(longEntry("key"));
        QVERIFY(m_bench->show());
        const QRectF bar = m_bench->place(m_bench->item("scrollBar"));
        const QSizeF popup = m_bench->root()->size();
        QVERIFY(bar.width() >= 8 && bar.height() > popup.height() / 2);
        QVERIFY(bar.right() < popup.width() && bar.bottom() < popup.height());
        QVERIFY(!bar.intersects(m_bench->place(m_bench->item("pin"))));
        QVERIFY(!bar.intersects(m_bench->place(m_bench->item("body"))));
    }

    void shouldKeepTheTitleInView()
    {
        m_bench = std::make_unique<DefaultUiBench>(longEntry("key"));
        QVERIFY(m_bench->show());
        m_bench->settle();
        const QRectF title = m_bench->place(m_bench->item("title"));
        const QRect pixels = title.toAlignedRect();
        const QImage before = m_bench->grab().copy(pixels);
        QQuickItem *flickable = m_bench->item("flickable");
        QVERIFY(m_bench->place(flickable).top() >= title.bottom());
        flickable->setProperty("contentY", 57.5); // in the middle of a line
        m_bench->settle();
        QCOMPARE(m_bench->place(m_bench->item("title")), title);
        QCOMPARE(m_bench->grab().copy(pixels), before);
    }

    void shouldScrollATitleThatFillsThePopup()
    {
        m_bench = std::make_unique<DefaultUiBench>(
                DefaultUiBench::entry("title=\"" + QByteArray("word ").repeated(600) + '"'));
        QVERIFY(m_bench->show());
        QQuickItem *flickable = m_bench->item("flickable");
        const qreal end = flickable->property("contentHeight").toReal() - flickable->height();
        QVERIFY(end > 100);
        flickable->setProperty("contentY", end);
        m_bench->settle();
        const QRectF title = m_bench->place(m_bench->item("title"));
        QVERIFY(title.top() < 0);
        QVERIFY(title.bottom() < m_bench->root()->height());
        QVERIFY(title.bottom() > m_bench->root()->height() - 60);
    }

    void shouldNotScrollContentThatFits()
    {
        m_bench = std::make_unique<DefaultUiBench>(
                DefaultUiBench::entry("title=\"Save\"", "<p>Text</p>"));
        QVERIFY(m_bench->show());
        QVERIFY(!m_bench->item("scrollBar"));
        turnWheel(QPointF(20, 20));
        QCOMPARE(m_bench->item("flickable")->property("contentY").toReal(), 0.0);
    }

private:
    static QByteArray longEntry(const QByteArray &key)
    {
        return DefaultUiBench::entry("title=\"T\"",
                                     "<p>" + QByteArray("word ").repeated(2000) + "</p>", key);
    }

    void turnWheel(const QPointF &at)
    {
        QWheelEvent event(at, m_bench->view()->mapToGlobal(at.toPoint()), {}, { 0, -240 },
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(m_bench->view(), &event);
    }

    /// Sends the events to the window: QTest drops the buttons when it moves the mouse over a
    /// widget.
    void drag(const QPointF &from, int down)
    {
        QWindow *window = m_bench->host.popup()->windowHandle();
        QTest::mousePress(window, Qt::LeftButton, {}, from.toPoint());
        for (int distance = 10; distance <= down; distance += 10)
            QTest::mouseMove(window, from.toPoint() + QPoint(0, distance));
        QTest::mouseRelease(window, Qt::LeftButton, {}, from.toPoint() + QPoint(0, down));
    }
};

HOVLETS_TEST_MAIN(tst_DefaultUiScrolling)

#include "tst_defaultui_scrolling.moc"
