// SPDX-License-Identifier: Apache-2.0
#include "HVFrameMemory.h"
#include "HVVideoComponent.h"
#include "HVVideoController.h"
#include "Patience.h"
#include "QmlPopup.h"
#include "TestMain.h"

using namespace Hovlets;

/// Tests how long the clips of a hidden popup keep their frames.
class tst_HVVideoComponentHidden : public QObject
{
    Q_OBJECT

private:
    /// Shows a popup with a clip that was decoded completely.
    void show(int delay)
    {
        m_popup->context().set(HVKeyClipReleaseDelay, delay);
        m_popup->context().set(HVKeyHideFadeDuration, 0);
        m_popup->show("");
        m_item = new HVVideoComponent(m_popup->view()->rootObject());
        QSignalSpy reported(m_item->findChild<HVVideoController *>(),
                            &HVVideoController::loadProgressChanged);
        m_item->setSource(QStringLiteral("red.avi"));
        // For the request, for loading, and for the end of the stream.
        QTRY_COMPARE_WITH_TIMEOUT(reported.count(), 3, Patience);
        QTRY_VERIFY(isRed(m_popup->pixel(20, 20)));
        m_memory = HVFrameMemory::used();
        QVERIFY(m_memory > 0);
    }

private Q_SLOTS:
    void init()
    {
        m_popup = std::make_unique<QmlPopup>();
        m_popup->makeClip(QStringLiteral("red.avi"),
                          QStringLiteral("color=red:size=64x48:rate=50:duration=0.4"));
    }

    void cleanup()
    {
        m_popup.reset();
        QTRY_COMPARE(HVFrameMemory::used(), qint64(0)); // their threads have ended
    }

    void shouldFreeTheFramesAfterTheDelay()
    {
        show(20);
        m_popup->popup()->hide();
        QTRY_COMPARE_WITH_TIMEOUT(HVFrameMemory::used(), qint64(0), Patience);

        m_popup->popup()->show();
        QVERIFY(isRed(m_popup->pixel(20, 20))); // the frame on screen stays
        m_item->play();
        QTRY_COMPARE_WITH_TIMEOUT(m_item->progress(), 1.0, Patience);
        QCOMPARE(HVFrameMemory::used(), m_memory);
    }

    void shouldFreeTheFramesWhenTheClipHasEnded()
    {
        show(20);
        m_item->play();
        m_popup->popup()->hide();
        QTRY_COMPARE_WITH_TIMEOUT(HVFrameMemory::used(), qint64(0), Patience);
        QCOMPARE(m_item->state(), HVVideoComponent::pausedState);
        QCOMPARE(m_item->progress(), 1.0);
    }

    void shouldKeepTheFrames_data()
    {
        QTest::addColumn<int>("delay");
        QTest::addColumn<bool>("isShownAgain");
        QTest::newRow("by default") << 0 << false;
        QTest::newRow("of a popup that is shown again before the end of the delay") << 200 << true;
        QTest::newRow("before the end of the delay") << Patience << false;
    }

    void shouldKeepTheFrames()
    {
        QFETCH(int, delay);
        QFETCH(bool, isShownAgain);
        show(delay);
        m_popup->popup()->hide();
        if (isShownAgain)
            m_popup->popup()->show();
        QTest::qWait(400);
        QCOMPARE(HVFrameMemory::used(), m_memory);
    }

private:
    std::unique_ptr<QmlPopup> m_popup;
    QPointer<HVVideoComponent> m_item;
    qint64 m_memory = 0;
};

HOVLETS_TEST_MAIN(tst_HVVideoComponentHidden)
#include "tst_hvvideocomponent_hidden.moc"
