// SPDX-License-Identifier: Apache-2.0
#include "PopupBench.h"
#include "TestMain.h"

#include <QtGui/QCursor>
#include <QtQuick/QQuickItem>

using namespace Hovlets;

namespace {

constexpr int Long = 60000; // ms; longer than any test, for fades and countdowns that must not end

/// Finishes a fade, as if its time had passed.
void finish(QPropertyAnimation *fade)
{
    fade->setCurrentTime(fade->duration());
}

} // namespace

class tst_HVWidgetFades : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_bench = std::make_unique<PopupBench>(); }
    void cleanup() { m_bench.reset(); }

    void shouldAppearAtOnceByDefault()
    {
        m_bench->show();
        QVERIFY(popup().isVisible());
        QCOMPARE(popup().windowOpacity(), 1.0);
        QCOMPARE(fade().state(), QAbstractAnimation::Stopped);
    }

    void shouldFadeIn()
    {
        m_bench->context().set(HVKeyShowFadeDuration, 200);
        QSignalSpy finished(&fade(), &QPropertyAnimation::finished);
        m_bench->show();
        QVERIFY(popup().isVisible());
        QVERIFY(qAbs(popup().windowOpacity() - 0.1) < 1.0 / 255); // to Qt's precision
        QCOMPARE(fade().state(), QAbstractAnimation::Running);
        QCOMPARE(fade().duration(), 200);
        QCOMPARE(fade().startValue().toReal(), 0.1);
        QCOMPARE(fade().endValue().toReal(), 1.0);
        QCOMPARE(popup().size(), QSize(201, 101));

        QVERIFY(finished.wait());
        QCOMPARE(popup().windowOpacity(), 1.0);
        QVERIFY(popup().isVisible());
    }

    void shouldNotStartTheFadeInAgain()
    {
        m_bench->context().set(HVKeyShowFadeDuration, Long);
        m_bench->show();
        fade().setCurrentTime(Long / 2);
        popup().showAnimated();
        QVERIFY(fade().currentTime() >= Long / 2);
        QCOMPARE(fade().state(), QAbstractAnimation::Running);
    }

    void shouldFadeOutInThreeHundredMillisecondsByDefault()
    {
        RecordingHost host(m_noSettings, {});
        m_bench->context() = host.manager()->context();
        QVERIFY(!m_bench->context().contains(HVKeyHideFadeDuration));
        m_bench->show();
        QSignalSpy finished(&fade(), &QPropertyAnimation::finished);
        popup().hideAnimated();
        QVERIFY(popup().isVisible());
        QCOMPARE(fade().state(), QAbstractAnimation::Running);
        QCOMPARE(fade().duration(), 300);
        QCOMPARE(fade().startValue().toReal(), 1.0);
        QCOMPARE(fade().endValue().toReal(), 0.0);
        QVERIFY(finished.wait());
        QVERIFY(!popup().isVisible());
    }

    void shouldFadeOutFromTheOpacityThatItHas()
    {
        m_bench->context().set(HVKeyHideFadeDuration, Long);
        m_bench->show();
        popup().setWindowOpacity(0.6);
        popup().hideAnimated();
        QCOMPARE(fade().startValue().toReal(), popup().windowOpacity());
        QVERIFY(fade().startValue().toReal() < 0.7);
    }

    void shouldHideImmediatelyWithoutADuration_data()
    {
        QTest::addColumn<int>("duration");
        QTest::newRow("0") << 0;
        QTest::newRow("below 0") << -5;
    }

    void shouldHideImmediatelyWithoutADuration()
    {
        QFETCH(int, duration);
        m_bench->context().set(HVKeyHideFadeDuration, duration);
        m_bench->context().set(HVKeyShowFadeDuration, duration);
        m_bench->show();
        QCOMPARE(popup().windowOpacity(), 1.0);
        popup().hideAnimated();
        QVERIFY(!popup().isVisible());
    }

    void shouldResetTheStateAndThenHide_data()
    {
        QTest::addColumn<int>("duration");
        QTest::newRow("after the fade-out") << Long;
        QTest::newRow("at once") << 0;
    }

    void shouldResetTheStateAndThenHide()
    {
        QFETCH(int, duration);
        m_bench->context().set(HVKeyHideFadeDuration, duration);
        m_bench->show();
        QQuickItem *root = m_bench->view->rootObject();
        root->setState(QStringLiteral("expanded"));
        QList<bool> wasVisible;
        connect(root, &QQuickItem::stateChanged, this, [&] { wasVisible += popup().isVisible(); });
        popup().hideAnimated();
        if (duration > 0) {
            QCOMPARE(root->state(), QStringLiteral("expanded"));
            finish(&fade());
        }
        QVERIFY(!popup().isVisible());
        QCOMPARE(root->state(), QString());
        QCOMPARE(wasVisible, QList<bool> { true });
    }

    void shouldIgnoreARequestToHideDuringAFade()
    {
        m_bench->context().set(HVKeyShowFadeDuration, Long);
        m_bench->context().set(HVKeyHideFadeDuration, 0);
        m_bench->show();
        popup().hideAnimated();
        QVERIFY(popup().isVisible());
        QCOMPARE(fade().endValue().toReal(), 1.0);
        finish(&fade());

        m_bench->context().set(HVKeyHideFadeDuration, Long);
        popup().hideAnimated();
        fade().setCurrentTime(Long / 2);
        popup().hideAnimated();
        QVERIFY(fade().currentTime() >= Long / 2);
        finish(&fade());
        QVERIFY(!popup().isVisible());
    }

    void shouldNotHideAHiddenPopup()
    {
        m_bench->show();
        popup().hide();
        m_bench->view->rootObject()->setState(QStringLiteral("expanded"));
        popup().hideAnimated();
        QCOMPARE(fade().state(), QAbstractAnimation::Stopped);
        QCOMPARE(m_bench->view->rootObject()->state(), QStringLiteral("expanded"));
    }

    void shouldIgnoreTheEndOfTheCountdownDuringTheFadeIn()
    {
        m_bench->context().set(HVKeyShowFadeDuration, Long);
        m_bench->context().set(HVKeyHideDelay, 1);
        PopupBench::moveMouseAway();
        m_bench->show();
        QCOMPARE(m_bench->countdown(), 1);
        QSignalSpy timeout(m_bench->hideTimer(), &QTimer::timeout);
        QVERIFY(timeout.wait());
        QVERIFY(popup().isVisible());
        QCOMPARE(fade().endValue().toReal(), 1.0);
    }

    void shouldNotHideAtTheEndOfAFadeInAfterAFadeOut()
    {
        m_bench->context().set(HVKeyHideFadeDuration, Long);
        m_bench->show();
        popup().hideAnimated();
        finish(&fade());
        QVERIFY(!popup().isVisible());
        m_bench->context().set(HVKeyShowFadeDuration, Long);
        m_bench->show();
        finish(&fade());
        QCOMPARE(fade().state(), QAbstractAnimation::Stopped);
        QVERIFY(popup().isVisible());
        QCOMPARE(popup().windowOpacity(), 1.0);
    }

    void shouldStayWhenItIsShownDuringTheFadeOut()
    {
        m_bench->context().set(HVKeyHideFadeDuration, Long);
        m_bench->show();
        popup().hideAnimated();
        fade().setCurrentTime(Long / 2);
        QVERIFY(popup().windowOpacity() < 0.9);
        m_bench->show();
        QVERIFY(popup().isVisible());
        QCOMPARE(popup().windowOpacity(), 1.0);
        QCOMPARE(fade().state(), QAbstractAnimation::Stopped);

        // The cancelled fade-out leaves nothing behind.
        m_bench->context().set(HVKeyShowFadeDuration, Long);
        popup().hide();
        m_bench->show();
        finish(&fade());
        QVERIFY(popup().isVisible());
    }

    void shouldCountDownAgainAfterAFadeOutWasGivenUp()
    {
        m_bench->context().set(HVKeyHideFadeDuration, Long);
        m_bench->show();
        PopupBench::moveMouseAway();
        popup().hideAnimated();
        QCOMPARE(m_bench->countdown(), -1);
        popup().showAnimated();
        QCOMPARE(m_bench->countdown(), 3000);
    }

    void shouldBeOpaqueAfterItWasHiddenInTheMiddleOfAFade_data()
    {
        QTest::addColumn<bool>("fadingOut");
        QTest::newRow("fade-in") << false;
        QTest::newRow("fade-out") << true;
    }

    void shouldBeOpaqueAfterItWasHiddenInTheMiddleOfAFade()
    {
        QFETCH(bool, fadingOut);
        m_bench->context().set(HVKeyShowFadeDuration, Long);
        m_bench->context().set(HVKeyHideFadeDuration, Long);
        m_bench->show();
        if (fadingOut) {
            finish(&fade());
            popup().hideAnimated();
        }
        fade().setCurrentTime(Long / 2);
        popup().hide();
        QCOMPARE(fade().state(), QAbstractAnimation::Stopped);

        m_bench->context().set(HVKeyShowFadeDuration, 0);
        m_bench->show();
        QVERIFY(popup().isVisible());
        QCOMPARE(popup().windowOpacity(), 1.0);
    }

    void shouldCountDownWhenItAppearsAwayFromTheMouse()
    {
        PopupBench::moveMouseAway();
        m_bench->show();
        QCOMPARE(m_bench->countdown(), 3000);
    }

    void shouldNotCountDownWhenItAppearsForTheControlUnderTheMouse()
    {
        m_bench->show();
        QCOMPARE(m_bench->countdown(), -1);
    }

    void shouldReadTheDelayAtEachUse_data()
    {
        QTest::addColumn<QVariant>("delay");
        QTest::addColumn<int>("expected");
        QTest::newRow("unset") << QVariant() << -1; // an invalid value reads as 0
        QTest::newRow("number") << QVariant(1500) << 1500;
        QTest::newRow("fraction") << QVariant(20.9) << 20;
        QTest::newRow("text") << QVariant(QStringLiteral("700")) << 700;
        QTest::newRow("zero") << QVariant(0) << -1;
        QTest::newRow("negative") << QVariant(-1) << -1;
        QTest::newRow("more than an int holds") << QVariant(1e20) << 1000000000;
    }

    void shouldReadTheDelayAtEachUse()
    {
        QFETCH(QVariant, delay);
        m_bench->show();
        popup().setTimer();
        QCOMPARE(m_bench->countdown(), 3000);
        m_bench->context().set(HVKeyHideDelay, delay);
        popup().setTimer();
        QTEST(m_bench->countdown(), "expected");
    }

    void shouldNotCountDownWhileItMustStayOpen()
    {
        m_bench->show();
        popup().setTimer();
        QCOMPARE(m_bench->countdown(), 3000);
        m_bench->view->setStayOpen(true);
        QCOMPARE(m_bench->countdown(), 3000); // the running countdown continues
        popup().setTimer();
        QCOMPARE(m_bench->countdown(), -1);
        popup().checkMousePosition(PopupBench::away());
        QCOMPARE(m_bench->countdown(), -1);
        m_bench->view->setStayOpen(false);
        popup().checkMousePosition(PopupBench::away());
        QCOMPARE(m_bench->countdown(), 3000);
    }

    void shouldHideWhenTheCountdownEnds()
    {
        m_bench->context().set(HVKeyHideDelay, 1);
        m_bench->show();
        popup().checkMousePosition(PopupBench::away());
        QVERIFY(popup().isVisible());
        QTRY_VERIFY(!popup().isVisible());
    }

    void shouldCountDownOnlyWhileTheMouseIsAway()
    {
        m_bench->show();
        popup().checkMousePosition(PopupBench::away());
        QCOMPARE(m_bench->countdown(), 3000);
        popup().checkMousePosition(popup().geometry().center());
        QCOMPARE(m_bench->countdown(), -1);
        popup().checkMousePosition(m_bench->control.geometry().center());
        QCOMPARE(m_bench->countdown(), -1);
    }

    void shouldNotPushBackARunningCountdown()
    {
        m_bench->show();
        popup().checkMousePosition(PopupBench::away());
        const int id = m_bench->hideTimer()->timerId();
        m_bench->context().set(HVKeyHideDelay, 9000);
        popup().checkMousePosition(QPoint(780, 780));
        QCOMPARE(m_bench->countdown(), 3000);
        QCOMPARE(m_bench->hideTimer()->timerId(), id); // a restart would change it
        popup().setTimer();
        QCOMPARE(m_bench->countdown(), 9000);
    }

    void shouldForgetTheCountdownWhenItHides()
    {
        m_bench->show();
        popup().setTimer();
        popup().hide();
        QCOMPARE(m_bench->countdown(), -1);

        m_bench->context().set(HVKeyHideFadeDuration, Long);
        m_bench->show();
        popup().setTimer();
        popup().hideAnimated();
        QCOMPARE(m_bench->countdown(), -1);
    }

    void shouldForgetTheCountdownOfThePreviousControl()
    {
        m_bench->show();
        popup().checkMousePosition(PopupBench::away()); // on the way to the next control
        QCOMPARE(m_bench->countdown(), 3000);
        m_bench->show(); // the mouse arrives there
        QCOMPARE(m_bench->countdown(), -1);
    }

private:
    HVWidget &popup() { return *m_bench->popup; }
    QPropertyAnimation &fade() { return *m_bench->fade(); }

    HVContext m_noSettings;
    std::unique_ptr<PopupBench> m_bench;
};

HOVLETS_TEST_MAIN(tst_HVWidgetFades)
#include "tst_hvwidget_fades.moc"
