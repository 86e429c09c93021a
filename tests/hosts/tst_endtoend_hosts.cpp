// SPDX-License-Identifier: Apache-2.0
#include "HoverTest.h"
#include "OpenCounter.h"
#include "Pointer.h"
#include "TestMain.h"
#include "TranslationFile.h"

#include <QtGui/QHelpEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QToolTip>

using namespace Hovlets;

namespace {

/// A host that watches the mouse itself and informs the library.
class ForwardingHost : public HVInterface
{
public:
    ForwardingHost(HVContext &settings, const QStringList &paths)
        : HVInterface(settings, paths)
    {
        qApp->installEventFilter(this);
    }

    bool eventFilter(QObject *object, QEvent *event) override
    {
        switch (event->type()) {
        case QEvent::MouseMove:
            return mouseMoveEventFilter(object, static_cast<QMouseEvent *>(event));
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
            return mouseButtonEventFilter(object, static_cast<QMouseEvent *>(event));
        case QEvent::ToolTip:
            return show(keyForObject(object), static_cast<QHelpEvent *>(event)->globalPos(),
                        object);
        default:
            return false;
        }
    }
};

HVWidget *anyPopup()
{
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (auto *popup = qobject_cast<HVWidget *>(window))
            return popup;
    }
    return nullptr;
}

} // namespace

/// Tests the host's decisions about hovering, with a real pointer.
class tst_EndToEndHosts : public HoverTest
{
    Q_OBJECT

private Q_SLOTS:
    void shouldShowWhileExactlyTheRequiredKeysAreHeld()
    {
        const QString shift = QStringLiteral("shift");
        const QString control = QStringLiteral("ctrl");
        m_host->manager()->context().set(HVKeyRequiredModifiers, int(Qt::ShiftModifier));
        QVERIFY(restOn("a"));
        QVERIFY(!popup() || !popup()->isVisible());

        Pointer::press(shift);
        Pointer::press(control);
        const bool asked = restOn("b");
        const bool withBoth = popup() && popup()->isVisible();
        Pointer::release(control);
        const bool shown = hover("a");
        Pointer::release(shift);
        QVERIFY(asked);
        QVERIFY(!withBoth);
        QVERIFY(shown);
    }

    void shouldLeaveEverythingToTooltipsWhileSuspended()
    {
        m_host->manager()->context().set(HVKeySuspended, true);
        m_window->button("a").setToolTip(QStringLiteral("Plain"));
        QVERIFY(rest(m_window->centerOf("a"),
                     [&] { return isToolTipShown(QStringLiteral("Plain")); }));
        QVERIFY(!popup() || !popup()->isVisible());
    }

    void shouldSpeakTheLanguageOfTheUser()
    {
        m_host->manager()->context().set(HVKeyLocale, QStringLiteral("de_DE"));
        QVERIFY(hover("a"));
        QCOMPARE(title(), QStringLiteral("Deutsch"));
        QVERIFY(hover("b"));
        QCOMPARE(title(), QStringLiteral("Title of b"));
    }

    void shouldFallBackToAnotherLanguage()
    {
        m_host->manager()->context().set(HVKeyFallbackLocale, QStringLiteral("de_DE"));
        QVERIFY(hover("a"));
        QCOMPARE(title(), QStringLiteral("Title of a"));
        QVERIFY(hover("unknown"));
        QCOMPARE(title(), QStringLiteral("Auch das"));
    }

    void shouldShowTheFallbackForAnUnknownControl()
    {
        m_host->manager()->context().set(HVKeyFallbackKey, QStringLiteral("b"));
        QVERIFY(rest(m_window->centerOf("unknown"), [&] { return isShowing("b"); }));
        QVERIFY(!QToolTip::isVisible());
    }

    void shouldOpenNoFileAgainForAMiss()
    {
        m_host->manager()->context().set(HVKeyHideDelay, 0);
        QWidget *parent = m_window.get();
        for (int i = 0; i < 8; ++i) { // without names, as hosts nest them
            auto *frame = new QWidget(parent);
            frame->setGeometry(i == 0 ? QRect(10, 60, 200, 60) : parent->rect());
            frame->show();
            parent = frame;
        }
        OpenCounter opened(m_folder.path() + QStringLiteral("/Pack.hovlets/Control/content.xml"));
        QVERIFY(hover("a"));
        QVERIFY(opened.take() > 0);
        popup()->hide();
        m_window->asked.clear();
        QVERIFY(rest(parent->mapToGlobal(QPoint(100, 30)),
                     [&] { return m_window->asked.count(QString()) >= 9; }));
        QCOMPARE(m_window->asked.count(QString()), 9);
        QCOMPARE(opened.take(), 0);
    }

    void shouldKeepTheLanguageOfAPinnedPopup()
    {
        m_german.add(QStringLiteral("German.hovlets/l10n/Hovlets_de_DE.qm"),
                     translationFile("Menu", "Open", QStringLiteral("Aufmachen")));
        m_host->manager()->context().set(HVKeyLocale, QStringLiteral("de_DE"));
        QVERIFY(hover("a"));
        const QPointer<HVWidget> pinned(popup());
        Pointer::moveTo(pinned->pos() + QPoint(150, 50));
        Pointer::click();
        QTRY_COMPARE(pinned->windowType(), Qt::Tool);
        QVERIFY(hover("b"));
        const QString text = QStringLiteral("Open");
        const QString context = QStringLiteral("Menu");
        QCOMPARE(m_host->view()->translate(text, context), text);
        QCOMPARE(pinned->view()->translate(text, context), QStringLiteral("Aufmachen"));
        delete pinned;
    }

    void shouldShowForADisabledControl() { QVERIFY(hover("disabled")); }

    void shouldServeAHostThatForwardsItsEvents()
    {
        m_host.reset();
        HVContext settings;
        settings.set(HVKeyHideFadeDuration, 0);
        settings.set(HVKeyHideDelay, 60000);
        const ForwardingHost host(settings, { m_folder.path() });
        HVWidget *popup = nullptr;
        QVERIFY(rest(m_window->centerOf("a"), [&] {
            popup = anyPopup();
            return popup && popup->isVisible();
        }));
        const auto *hideTimer = popup->findChild<QTimer *>(QString(), Qt::FindDirectChildrenOnly);
        stopAskingForTooltips();
        Pointer::moveTo(m_window->mapToGlobal(QPoint(390, 120)));
        QTRY_VERIFY(hideTimer->isActive());
        Pointer::moveTo(m_window->centerOf("a"));
        QTRY_VERIFY(!hideTimer->isActive());
        QVERIFY(popup->isVisible());
        Pointer::click();
        QTRY_VERIFY(!popup->isVisible());
    }
};

HOVLETS_TEST_MAIN(tst_EndToEndHosts)
#include "tst_endtoend_hosts.moc"
