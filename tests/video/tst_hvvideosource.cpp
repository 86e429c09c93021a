// SPDX-License-Identifier: Apache-2.0
#include "RequestedSource.h"
#include "TestMain.h"

#include <limits>
#include <memory>
#include <type_traits>

using namespace Hovlets;

static_assert(std::is_base_of_v<QThread, HVVideoSource>);
static_assert(std::is_base_of_v<HVVideoSourceChange, ::HVVideoSourceSourceChange>);
static_assert(std::has_virtual_destructor_v<HVVideoSourceChange>);
static_assert(std::is_same_v<decltype(std::declval<HVVideoSource &>().getTime()), double>);

/// Tests requests and frames without a thread.
class tst_HVVideoSource : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_source = std::make_unique<RequestedSource>();
        m_seen = std::make_unique<SignalOrder>();
        m_seen->note(m_source.get(), &HVVideoSource::frameReady, QStringLiteral("frameReady"));
        m_seen->note(m_source.get(), &HVVideoSource::sourceChanged,
                     QStringLiteral("sourceChanged"));
        m_seen->note(m_source.get(), &HVVideoSource::streamEnded, QStringLiteral("streamEnded"));
        m_seen->note(m_source.get(), &HVVideoSource::sourceLoaded, QStringLiteral("sourceLoaded"));
        m_seen->note(m_source.get(), &HVVideoSource::actionChanged,
                     QStringLiteral("actionChanged"));
        m_seen->note(m_source.get(), &HVVideoSource::positionChanged,
                     QStringLiteral("positionChanged"));
        m_seen->note(m_source.get(), &HVVideoSource::loadProgressChanged,
                     QStringLiteral("loadProgressChanged"));
    }

    void cleanup()
    {
        if (m_source)
            m_source->end();
        m_seen.reset();
        m_source.reset();
    }

    void shouldNumberItsActions()
    {
        QCOMPARE(int(HVVideoSource::NoAction), -1);
        QCOMPARE(int(HVVideoSource::StopAction), 0);
        QCOMPARE(int(HVVideoSource::LoadAction), 1);
        QCOMPARE(int(HVVideoSource::CloseAction), 2);
        QCOMPARE(int(HVVideoSource::SeekAction), 3);
        QCOMPARE(int(HVVideoSource::DecodeAction), 4);
        QCOMPARE(int(HVVideoSource::IdleAction), 5);
    }

    void shouldListItsSignalsInOrder()
    {
        QCOMPARE(ownMethods(HVVideoSource::staticMetaObject, QMetaMethod::Signal),
                 QStringList({ QStringLiteral("frameReady()"), QStringLiteral("sourceChanged()"),
                               QStringLiteral("streamEnded()"), QStringLiteral("sourceLoaded()"),
                               QStringLiteral("actionChanged()"),
                               QStringLiteral("positionChanged()"),
                               QStringLiteral("loadProgressChanged()") }));
    }

    void shouldBeginIdleWithoutAClip()
    {
        QVERIFY(m_source->source().isEmpty());
        QVERIFY(!m_source->shouldQuit());
        QVERIFY(!m_source->isRunning());
        QCOMPARE(m_source->action(), HVVideoSource::IdleAction);
        QCOMPARE(m_source->loadedFrameCount(), quint64(0));
        QCOMPARE(m_source->totalFrameCount(), quint64(0));
        QVERIFY(!m_source->isFrameAvailable(0));
        QVERIFY(m_source->getFrame(0).isNull());
        m_source->processActionQueue();
        QVERIFY(m_source->calls.names().isEmpty());
        QVERIFY(m_seen->names().isEmpty());
    }

    void shouldBelongToItsParent()
    {
        QObject parent;
        class Child : public FakeVideoSource
        {
        public:
            using FakeVideoSource::FakeVideoSource;
        };
        auto *child = new Child;
        child->setParent(&parent);
        QCOMPARE(child->parent(), &parent);
    }

    void shouldDistinguishTheKindsOfChange()
    {
        HVVideoSourceChange change(HVVideoSource::SeekAction);
        QCOMPARE(change.changeType(), 1);
        QCOMPARE(change.action, HVVideoSource::SeekAction);

        ::HVVideoSourceSourceChange sourceChange(clipUrl());
        QCOMPARE(sourceChange.changeType(), 3);
        QCOMPARE(sourceChange.action, HVVideoSource::LoadAction);
        QCOMPARE(sourceChange.url, clipUrl());
        QCOMPARE(static_cast<HVVideoSourceChange &>(sourceChange).changeType(), 3);
    }

    void shouldApplyAChangeOfTheAction()
    {
        HVVideoSourceChange(HVVideoSource::CloseAction).apply(m_source.get());
        QCOMPARE(m_source->calls.names(), QStringList(QStringLiteral("action 2")));
        QCOMPARE(m_source->action(), HVVideoSource::CloseAction);
    }

    void shouldApplyAChangeOfTheSourceBeforeItsAction()
    {
        ::HVVideoSourceSourceChange(clipUrl()).apply(m_source.get());
        QCOMPARE(m_source->calls.names(),
                 QStringList({ QStringLiteral("source ") + clipUrl().toString(),
                               QStringLiteral("action 1") }));
        QCOMPARE(m_source->source(), clipUrl());
        QCOMPARE(m_source->action(), HVVideoSource::LoadAction);
        QCOMPARE(m_seen->names(), QStringList(QStringLiteral("actionChanged")));
    }

    void shouldIgnoreNoAction()
    {
        m_source->changeSetAction(HVVideoSource::DecodeAction);
        m_seen->take();
        m_source->changeSetAction(HVVideoSource::NoAction);
        QCOMPARE(m_source->action(), HVVideoSource::DecodeAction);
        QVERIFY(m_seen->names().isEmpty());
    }

    void shouldAnnounceEveryActionEvenTheSame()
    {
        for (int action = HVVideoSource::StopAction; action <= HVVideoSource::IdleAction; ++action)
            m_source->changeSetAction(HVVideoSource::Action(action));
        m_source->changeSetAction(HVVideoSource::IdleAction);
        QCOMPARE(m_seen->count(QStringLiteral("actionChanged")), 7);
        QCOMPARE(m_source->action(), HVVideoSource::IdleAction);
    }

    void shouldStoreTheSourceSilently()
    {
        m_source->changeSetSource(clipUrl());
        QCOMPARE(m_source->source(), clipUrl());
        QVERIFY(m_seen->names().isEmpty());
    }

    void shouldRefuseRequestsWithoutANewClip_data()
    {
        QTest::addColumn<QUrl>("url");
        QTest::newRow("empty") << QUrl();
        QTest::newRow("invalid") << QUrl(QStringLiteral("http://[broken"));
        QTest::newRow("current") << clipUrl(7);
    }

    void shouldRefuseRequestsWithoutANewClip()
    {
        QFETCH(QUrl, url);
        m_source->changeSetSource(clipUrl(7));
        m_source->calls.take();
        QVERIFY(!m_source->setSource(url));
        m_source->processActionQueue();
        QVERIFY(m_source->calls.names().isEmpty());
        QCOMPARE(m_source->source(), clipUrl(7));
    }

    void shouldQueueAClipWithoutTouchingTheCurrentOne()
    {
        m_source->changeSetSource(clipUrl(7));
        m_source->changeSetAction(HVVideoSource::DecodeAction);
        QVERIFY(m_source->setSource(clipUrl()));
        QCOMPARE(m_source->source(), clipUrl(7));
        QCOMPARE(m_source->action(), HVVideoSource::DecodeAction);
        m_source->processActionQueue();
        QCOMPARE(m_source->source(), clipUrl());
        QCOMPARE(m_source->action(), HVVideoSource::LoadAction);
    }

    void shouldQueueTheSameClipTwiceBeforeItIsCurrent()
    {
        QVERIFY(m_source->setSource(clipUrl()));
        QVERIFY(m_source->setSource(clipUrl()));
        m_source->processActionQueue();
        QVERIFY(!m_source->setSource(clipUrl()));
        m_source->processActionQueue();
        QCOMPARE(m_source->calls.count(QStringLiteral("source ") + clipUrl().toString()), 2);
        m_source->processActionQueue();
        QCOMPARE(m_source->calls.count(QStringLiteral("source ") + clipUrl().toString()), 2);
    }

    void shouldApplyOneChangeAtATimeInOrder()
    {
        m_source->setAction(HVVideoSource::SeekAction);
        m_source->setSource(clipUrl());
        m_source->setAction(HVVideoSource::NoAction);
        m_source->setAction(HVVideoSource::IdleAction);
        QVERIFY(m_source->calls.names().isEmpty());

        const QList<QStringList> steps {
            { QStringLiteral("action 3") },
            { QStringLiteral("source ") + clipUrl().toString(), QStringLiteral("action 1") },
            { QStringLiteral("action -1") },
            { QStringLiteral("action 5") },
            {},
        };
        for (const QStringList &step : steps) {
            m_source->processActionQueue();
            QCOMPARE(m_source->calls.take(), step);
        }
    }

    void shouldForgetQueuedChanges()
    {
        m_source->setAction(HVVideoSource::SeekAction);
        m_source->setSource(clipUrl());
        m_source->clearChanges();
        m_source->processActionQueue();
        QVERIFY(m_source->calls.names().isEmpty());
        m_source->setAction(HVVideoSource::DecodeAction);
        m_source->processActionQueue();
        QCOMPARE(m_source->calls.names(), QStringList(QStringLiteral("action 4")));
    }

    void shouldAskForNothingWhenClosed()
    {
        m_source->changeSetSource(clipUrl());
        m_source->calls.take();
        m_source->close();
        m_source->processActionQueue();
        QVERIFY(m_source->calls.names().isEmpty());
        QCOMPARE(m_source->source(), clipUrl());
    }

    void shouldPrepareForAClip_data()
    {
        QTest::addColumn<QUrl>("url");
        QTest::addColumn<int>("action");
        QTest::newRow("clip") << clipUrl() << int(HVVideoSource::DecodeAction);
        QTest::newRow("none") << QUrl() << int(HVVideoSource::IdleAction);
    }

    void shouldPrepareForAClip()
    {
        QFETCH(QUrl, url);
        QFETCH(int, action);
        m_source->setupSource();
        m_source->push(3);
        m_source->clearChanges();
        m_source->changeSetSource(url);
        m_source->calls.take();
        m_seen->take();
        // Handlers of the signal see the cache and the request of the new source.
        connect(m_source.get(), &HVVideoSource::sourceChanged, this, [this] {
            m_source->calls.add(QStringLiteral("%1 pictures").arg(m_source->loadedFrameCount()));
            m_source->processActionQueue();
        });

        m_source->setupSource();
        QCOMPARE(m_source->calls.names(),
                 QStringList({ QStringLiteral("0 pictures"),
                               QStringLiteral("action %1").arg(action) }));
        QCOMPARE(m_seen->names(),
                 QStringList({ QStringLiteral("sourceChanged"), QStringLiteral("actionChanged") }));
        m_source->processActionQueue();
        QCOMPARE(m_source->calls.names().size(), 2); // no further request
    }

    void shouldStartAgainWhenTheSameClipIsPreparedAgain()
    {
        m_source->changeSetSource(clipUrl());
        m_source->setupSource();
        m_source->push(3);
        m_source->setupSource();
        QCOMPARE(m_source->loadedFrameCount(), quint64(0));
    }

    void shouldReturnItsFrames()
    {
        m_source->setupSource();
        QVERIFY(!m_source->isFrameAvailable(0));
        QVERIFY(m_source->getFrame(0).isNull());
        for (quint64 count = 1; count <= 3; ++count) {
            HVVideoFrame frame(int(count), 1, QImage::Format_RGB32, 0);
            frame.setPts(double(count) / 10);
            m_source->pushFrame(frame);
            QCOMPARE(m_source->loadedFrameCount(), count);
            QCOMPARE(m_source->totalFrameCount(), count);
            QVERIFY(m_source->isFrameAvailable(count - 1));
            QVERIFY(!m_source->isFrameAvailable(count));
        }
        for (unsigned int i = 0; i < 3; ++i) {
            QCOMPARE(m_source->getFrame(i).width(), int(i) + 1);
            QCOMPARE(m_source->getFrame(i).pts(), (i + 1) / 10.0);
        }
        QVERIFY(m_source->getFrame(3).isNull());
        QVERIFY(m_source->getFrame(std::numeric_limits<unsigned int>::max()).isNull());
        QVERIFY(!m_source->isFrameAvailable(quint64(1) << 32));
        QVERIFY(!m_source->isFrameAvailable(std::numeric_limits<quint64>::max()));
        QCOMPARE(m_seen->count(QStringLiteral("frameReady")), 0);
        QCOMPARE(m_seen->count(QStringLiteral("loadProgressChanged")), 0);
    }

    void shouldDropFramesThatComeBeforeAClip()
    {
        m_source->pushFrame(HVVideoFrame(1, 1, QImage::Format_RGB32, 0));
        QCOMPARE(m_source->loadedFrameCount(), quint64(0));
    }

    void shouldAnnounceThatItIsLoaded()
    {
        QVERIFY(m_source->loadSource());
        QCOMPARE(m_seen->names(), QStringList(QStringLiteral("sourceLoaded")));
    }

    void shouldAnnounceTheEndOfTheStream()
    {
        m_source->notifyStreamEnded();
        QCOMPARE(m_seen->names(), QStringList(QStringLiteral("streamEnded")));
    }

private:
    std::unique_ptr<RequestedSource> m_source;
    std::unique_ptr<SignalOrder> m_seen;
};

HOVLETS_TEST_MAIN(tst_HVVideoSource)

#include "tst_hvvideosource.moc"
