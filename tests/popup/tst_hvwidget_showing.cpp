// SPDX-License-Identifier: Apache-2.0
#include "HVView.h"
#include "HVWidget.h"
#include "PopupBench.h"
#include "TestMain.h"

#include <QtGui/QWindow>

#include <functional>

using namespace Hovlets;

namespace {

/// Does something once, while a widget shows.
class WhenShown : public QObject
{
public:
    WhenShown(QWidget &widget, std::function<void()> action)
        : m_action(std::move(action))
    {
        widget.installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Show && m_action)
            std::exchange(m_action, nullptr)();
        return false;
    }

private:
    std::function<void()> m_action;
};

bool isOnScreen(const HVWidget &popup)
{
    return popup.isVisible() && popup.windowHandle()->isVisible();
}

} // namespace

/// Tests hosts that hide, show or pin a popup while it shows.
class tst_HVWidgetShowing : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldStayHiddenIfTheHostHidesItWhenItShows()
    {
        PopupBench bench;
        const WhenShown hider(*bench.popup, [&] { bench.popup->hide(); });
        bench.show();
        QVERIFY(!bench.popup->isVisible());
        QVERIFY(!bench.popup->windowHandle()->isVisible());
    }

    void shouldShowIfTheHostHidesItAndShowsOtherContentWhenItShows()
    {
        HoverBench bench;
        QVERIFY(bench.show());
        bench.popup()->hide();
        bool isShown = false;
        const WhenShown shower(*bench.popup(), [&] {
            bench.popup()->hide();
            isShown = bench.show(QStringLiteral("b"));
        });
        bench.show();
        QVERIFY(isShown);
        QVERIFY(isOnScreen(*bench.popup()));
        QCOMPARE(bench.view()->content()->attribute(QStringLiteral("key")), QStringLiteral("b"));
    }

    void shouldBeAWindowIfTheHostPinsItWhenItShows()
    {
        HoverBench bench;
        QVERIFY(bench.show());
        bench.popup()->hide();
        const QPointer<HVWidget> popup(bench.popup());
        const WhenShown pinner(*popup, [&] { popup->view()->setReserved(true); });
        bench.show();
        QVERIFY(popup);
        QCOMPARE(popup->windowType(), Qt::Tool);
        QVERIFY(isOnScreen(*popup));
        popup->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!popup);
    }
};

HOVLETS_TEST_MAIN(tst_HVWidgetShowing)
#include "tst_hvwidget_showing.moc"
