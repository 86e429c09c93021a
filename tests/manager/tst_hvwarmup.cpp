// SPDX-License-Identifier: Apache-2.0
#include "HVWarmUp.h"
#include "HoverScene.h"
#include "TestMain.h"

#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtWidgets/QMenu>

using namespace Hovlets;

namespace {

/// Counts the popups that show.
class ShownPopups : public QObject
{
public:
    ShownPopups() { qApp->installEventFilter(this); }

    int count = 0;

protected:
    bool eventFilter(QObject *object, QEvent *event) override
    {
        if (event->type() == QEvent::Show && qobject_cast<HVWidget *>(object))
            ++count;
        return false;
    }
};

} // namespace

class tst_HVWarmUp : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_scene = std::make_unique<HoverScene>();
        m_scene->context().set(HVKeyWarmUp, QStringLiteral("a"));
        QVERIFY(QTest::qWaitForWindowExposed(&m_scene->window));
    }

    void cleanup() { m_scene.reset(); }

    void shouldDoNothingByDefault()
    {
        m_scene->context().set(HVKeyWarmUp, QVariant());
        m_scene->start();
        QVERIFY(!warmUp());
        QVERIFY(!m_scene->popup());
    }

    void shouldPrepareThePopupWhenTheApplicationIsIdle()
    {
        const ShownPopups shown;
        m_scene->start();
        QVERIFY(!m_scene->popup()); // the start-up is as fast as without
        QTRY_VERIFY(m_scene->popup());
        QTRY_COMPARE(m_scene->shownKey(), QStringLiteral("a"));
        QTRY_VERIFY(m_scene->popup()->windowHandle());
        QTRY_VERIFY(!warmUp()->isRunning());
        QCOMPARE(shown.count, 0);
        QVERIFY(!m_scene->popup()->isVisible());
        QVERIFY(!m_scene->view()->quickWindow()->isVisible());
    }

    void shouldTakeItsStepsOneByOne()
    {
        m_scene->start();
        step();
        QVERIFY(m_scene->popup() && !m_scene->view()->content());
        step();
        QVERIFY(m_scene->view()->rootObject() && !m_scene->popup()->windowHandle());
        step();
        QVERIFY(m_scene->popup()->windowHandle());
        QSignalSpy rendered(m_scene->view()->quickWindow(), &QQuickWindow::afterRendering);
        step();
        QCOMPARE(rendered.count(), 1);
        step();
        QVERIFY(!warmUp()->isRunning());
    }

    void shouldWaitForTheHostsWindow()
    {
        m_scene->window.hide();
        m_scene->start();
        step();
        QVERIFY(!m_scene->popup());
        m_scene->window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&m_scene->window));
        step();
        QVERIFY(m_scene->popup());
    }

    void shouldLeaveAMenuOpen()
    {
        m_scene->start();
        QMenu menu(&m_scene->window);
        menu.addAction(QStringLiteral("Entry"));
        menu.popup(QPoint(200, 200));
        for (int i = 0; i < 4; ++i)
            step();
        QVERIFY(menu.isVisible());
        QVERIFY(!m_scene->popup());
    }

    void shouldGiveWayToAPopup()
    {
        m_scene->start();
        step();
        QVERIFY(m_scene->show(QStringLiteral("b")));
        step();
        QVERIFY(!warmUp()->isRunning());
        QCOMPARE(m_scene->shownKey(), QStringLiteral("b"));
        QVERIFY(m_scene->isShowing());
    }

    void shouldChangeNothingAboutTheFirstPopup()
    {
        m_scene->start();
        for (int i = 0; i < 4; ++i)
            step();
        for (const char *key : { "a", "b" }) {
            QVERIFY(m_scene->show(QString::fromUtf8(key)));
            QVERIFY(m_scene->isShowing());
            QCOMPARE(m_scene->shownKey(), QString::fromUtf8(key));
            QCOMPARE(m_scene->popup()->pos(), HoverScene::Position + QPoint(35, 30));
        }
        QCOMPARE(m_scene->popup()->size(), QSize(201, 101));
    }

    void shouldGiveUpWithoutContent()
    {
        m_scene->context().set(HVKeyWarmUp, QStringLiteral("unknown"));
        m_scene->start();
        step();
        step();
        QVERIFY(!warmUp()->isRunning());
        QVERIFY(m_scene->show(QStringLiteral("a")));
    }

private:
    HVWarmUp *warmUp() { return m_scene->manager().findChild<HVWarmUp *>(); }
    void step() { warmUp()->takeStep(); }

    std::unique_ptr<HoverScene> m_scene;
};

HOVLETS_TEST_MAIN(tst_HVWarmUp)
#include "tst_hvwarmup.moc"
