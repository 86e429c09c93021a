// SPDX-License-Identifier: Apache-2.0
#include "ClipTest.h"
#include "HVVideoComponent.h"
#include "TestMain.h"

#include <QtCore/QPointer>

using namespace Hovlets;

/// Tests how an entry's clip plays in the default user interface.
class tst_DefaultUiClipPlaying : public ClipTest
{
    Q_OBJECT

private Q_SLOTS:
    void shouldShowControlsOnlyWhileTheyAreUsed()
    {
        showClip("-s 320x180 -t 3.6 -r 25");
        QTRY_VERIFY(video());
        QTRY_COMPARE(video()->loadProgress(), 1.0);
        QTRY_VERIFY(video()->position() > 3);
        leave();
        QTRY_VERIFY(!m_bench->item("clipControls"));
        hover();
        QTRY_VERIFY(m_bench->item("clipControls"));
        QVERIFY(m_bench->place(picture()).contains(m_bench->place(m_bench->item("clipControls"))));
        leave();
        QTRY_VERIFY(!m_bench->item("clipControls"));

        m_bench->click(picture());
        activate();
        leave();
        QTRY_VERIFY(m_bench->item("clipControls")); // it has the focus
    }

    void shouldShowTheTime()
    {
        showClip("-s 320x180 -t 63.6 -r 5");
        QTRY_VERIFY(video());
        QTRY_COMPARE(video()->loadProgress(), 1.0);
        hover();
        m_bench->click(picture());
        QCOMPARE(video()->state(), HVVideoComponent::pausedState);
        const auto time = [&] { return m_bench->item("clipTime")->property("text").toString(); };
        video()->setPosition(7);
        QTRY_COMPARE(time(), QStringLiteral("0:01 / 1:04"));
        video()->setPosition(310);
        QTRY_COMPARE(time(), QStringLiteral("1:02 / 1:04"));
        QCOMPARE(video()->duration(), 63.6);
        QCOMPARE(video()->time(), 62.0);
        const QRectF place = m_bench->place(m_bench->item("clipTime"));
        QVERIFY(!place.intersects(m_bench->place(m_bench->item("progressBar"))));
        QVERIFY(m_bench->place(m_bench->item("clipControls")).contains(place));
    }

    void shouldPlayAutomaticallyToItsEndAndThenOfferToPlayAgain()
    {
        showClip(ShortClip);
        QTRY_VERIFY(video());
        QTRY_COMPARE(video()->state(), HVVideoComponent::playingState);
        QTRY_COMPARE(video()->progress(), 1.0);
        QTRY_COMPARE(video()->state(), HVVideoComponent::pausedState);
        leave();
        QTRY_VERIFY(!m_bench->item("playMark")); // nothing covers the result
        hover();
        QTRY_VERIFY(m_bench->item("playMark"));

        m_bench->click(picture());
        QCOMPARE(video()->state(), HVVideoComponent::playingState);
        QVERIFY(video()->progress() < 1.0);
        QTRY_VERIFY(!m_bench->item("playMark"));
        QTRY_COMPARE(video()->progress(), 1.0);
    }

    void shouldPauseAndResumeByAClick()
    {
        showClip(LongClip);
        QTRY_VERIFY(video());
        QTRY_VERIFY(video()->position() > 3);
        m_bench->click(picture());
        QCOMPARE(video()->state(), HVVideoComponent::pausedState);
        QTRY_VERIFY(m_bench->item("playMark"));
        const qlonglong paused = video()->position();

        m_bench->click(picture());
        QCOMPARE(video()->state(), HVVideoComponent::playingState);
        QTRY_VERIFY(video()->position() > paused + 3);
    }

    void shouldContinuePlayingWhenTheDecoderEndsAfterAClick()
    {
        showClip(LongClip);
        QTRY_VERIFY(video());
        QTRY_COMPARE(video()->state(), HVVideoComponent::playingState);
        m_bench->click(picture());
        m_bench->click(picture());
        QCOMPARE(video()->state(), HVVideoComponent::playingState);
        video()->setState(HVVideoComponent::resetState); // happens at the end of the stream
        QCOMPARE(video()->state(), HVVideoComponent::playingState);

        m_bench->click(picture()); // a clip that the user paused stays paused
        video()->setState(HVVideoComponent::resetState);
        QCOMPARE(video()->state(), HVVideoComponent::pausedState);
    }

    void shouldStayOnTheLastPictureWithReducedMotion_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<bool>("still");
        QTest::newRow("true") << QVariant(true) << true;
        QTest::newRow("1") << QVariant(1) << true;
        QTest::newRow("false") << QVariant(false) << false;
        QTest::newRow("0") << QVariant(0) << false;
    }

    void shouldStayOnTheLastPictureWithReducedMotion()
    {
        QFETCH(QVariant, value);
        QFETCH(bool, still);
        showClip(LongClip, { QStringLiteral("reducedMotion"), value });
        QTRY_VERIFY(video());
        if (!still) {
            QTRY_COMPARE(video()->state(), HVVideoComponent::playingState);
            return;
        }
        QTRY_COMPARE(video()->loadProgress(), 1.0);
        QTRY_VERIFY(video()->progress() > 0.98);
        leave();
        QTRY_VERIFY(!m_bench->item("playMark")); // nothing covers the result
        hover();
        QTRY_VERIFY(m_bench->item("playMark"));
        Q_EMIT video()->loadProgressChanged();
        m_bench->settle();
        QCOMPARE(video()->state(), HVVideoComponent::pausedState);
        m_bench->click(picture());
        QTRY_VERIFY(video()->position() > 3);
        QVERIFY(video()->progress() < 0.9); // from the beginning
    }

    void shouldPlayAgainAndAgainIfTheEntryAsksForIt()
    {
        showClip(QString::fromLatin1(ShortClip), {}, "loop=\"true\"");
        QTRY_VERIFY(video());
        QTRY_VERIFY(video()->isDecoded()); // until then, it may jump back before its end
        QVector<double> turns; // where it jumped back
        const QObject receiver; // not the test: the clip plays on until it is deleted
        connect(video(), &HVVideoComponent::progressChanged, &receiver, [&, last = 0.0]() mutable {
            if (video()->progress() < last)
                turns.append(last);
            last = video()->progress();
        });
        QTRY_VERIFY(turns.size() >= 2);
        QCOMPARE(turns.constLast(), 1.0);
        m_bench->click(picture());
        QCOMPARE(video()->state(), HVVideoComponent::pausedState);
    }

    void shouldStepThroughTheFramesByKeys()
    {
        showClip(LongClip);
        QTRY_VERIFY(video());
        QTRY_VERIFY(video()->position() > 3);
        m_bench->click(picture());
        QCOMPARE(video()->state(), HVVideoComponent::pausedState);
        const qlonglong paused = video()->position();
        activate(); // as when the popup is pinned and the user clicks it
        QTest::keyClick(m_bench->view(), Qt::Key_Right);
        QTRY_COMPARE(video()->position(), paused + 1);
        QTest::keyClick(m_bench->view(), Qt::Key_Left);
        QTest::keyClick(m_bench->view(), Qt::Key_Left);
        QTRY_COMPARE(video()->position(), paused - 1);
        QTest::keyClick(m_bench->view(), Qt::Key_Space);
        QCOMPARE(video()->state(), HVVideoComponent::playingState);
    }

    void shouldShowMovingPictures()
    {
        showClip(LongClip);
        QTRY_VERIFY(video());
        QTRY_VERIFY(video()->position() > 2);
        hover();
        QTRY_VERIFY(m_bench->item("progressValue"));
        m_bench->settle();
        const QImage first = grabPicture();
        QTRY_VERIFY(video()->position() > 20);
        m_bench->settle();
        QVERIFY(grabPicture() != first);
        QVERIFY(m_bench->item("progressValue")->width() > 0);
    }

    void shouldFollowADragOfTheBar()
    {
        showClip(LongClip);
        QTRY_VERIFY(video());
        QTRY_VERIFY(video()->isDecoded()); // the progress is a share of the decoded frames
        QTRY_VERIFY(video()->position() > 2);
        hover();
        QTRY_VERIFY(m_bench->item("progressBar"));
        const QRectF bar = m_bench->place(m_bench->item("progressBar"));
        const auto at = [&](double part) {
            return QPointF(bar.left() + bar.width() * part, bar.center().y()).toPoint();
        };
        QTest::mousePress(m_bench->view(), Qt::LeftButton, {}, at(0.5));
        QCOMPARE(video()->state(), HVVideoComponent::pausedState);
        QVERIFY(video()->scrubbing());
        QVERIFY(qAbs(video()->progress() - 0.5) < 0.05);
        drag(at(0.8));
        QTRY_VERIFY(qAbs(video()->progress() - 0.8) < 0.05);
        // A drag past the end stops at the last frame.
        drag(at(1.5));
        QTRY_VERIFY(video()->progress() > 0.9);
        QVERIFY(video()->progress() < 1.0);
        drag(at(0.1));
        QTRY_VERIFY(qAbs(video()->progress() - 0.1) < 0.05);
        QTest::mouseRelease(m_bench->view(), Qt::LeftButton, {}, at(0.1));
        QVERIFY(!video()->scrubbing());
        QCOMPARE(video()->state(), HVVideoComponent::playingState);
    }

    void shouldPauseWhileThePopupIsHidden()
    {
        showClip(LongClip);
        QTRY_VERIFY(video());
        QTRY_VERIFY(video()->position() > 2);
        QWidget *popup = m_bench->view()->window();
        const QPointer<HVVideoComponent> clip = video();
        popup->hide();
        QVERIFY(clip);
        QCOMPARE(clip->state(), HVVideoComponent::pausedState);
        const qlonglong paused = clip->position();

        popup->show();
        QCOMPARE(clip->state(), HVVideoComponent::playingState);
        QTRY_VERIFY(clip->position() > paused + 2);
    }

    void shouldStayPausedWhenThePopupComesBack()
    {
        showClip(LongClip);
        QTRY_VERIFY(video());
        QTRY_VERIFY(video()->position() > 2);
        m_bench->click(picture());
        QCOMPARE(video()->state(), HVVideoComponent::pausedState);
        const QPointer<HVVideoComponent> clip = video();
        m_bench->view()->window()->hide();
        m_bench->view()->window()->show();
        QVERIFY(clip);
        QCOMPARE(clip->state(), HVVideoComponent::pausedState);
    }

    void shouldNotStartWhileThePopupIsHidden()
    {
        showClip(LongClip);
        QTRY_VERIFY(video());
        const QPointer<HVVideoComponent> clip = video();
        m_bench->view()->window()->hide();
        QTRY_COMPARE(clip->loadProgress(), 1.0);
        QCOMPARE(clip->state(), HVVideoComponent::pausedState);
        m_bench->view()->window()->show();
        QTRY_COMPARE(clip->state(), HVVideoComponent::playingState);
    }

    void shouldStopPlayingWithThePopup()
    {
        showClip(LongClip);
        QTRY_VERIFY(video());
        QTRY_COMPARE(video()->state(), HVVideoComponent::playingState);
        const QPointer<HVVideoComponent> playing = video();
        m_bench->host.popup()->setView(nullptr);
        QTRY_VERIFY(!playing);
        m_bench.reset();
    }

private:
    /// Moves the mouse with its button pressed. QTest does so with only one of the Qt versions.
    void drag(const QPoint &to)
    {
        QMouseEvent move(QEvent::MouseMove, to, m_bench->view()->mapToGlobal(to), Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_bench->view(), &move);
    }
};

HOVLETS_TEST_MAIN(tst_DefaultUiClipPlaying)

#include "tst_defaultui_clip_playing.moc"
