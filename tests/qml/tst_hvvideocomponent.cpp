// SPDX-License-Identifier: Apache-2.0
#include "DebugLog.h"
#include "HVVideoComponent.h"
#include "HVVideoController.h"
#include "HVVideoSourceFFMPEG.h"
#include "QmlPopup.h"
#include "SignalOrder.h"
#include "TestMain.h"

#include <QtQuick/QSGImageNode>

#include <cmath>

using namespace Hovlets;

/// Tests the item that shows the clips of a popup's content.
class tst_HVVideoComponent : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_log = std::make_unique<DebugLog>();
        m_popup = std::make_unique<QmlPopup>();
    }

    void cleanup()
    {
        m_popup.reset();
        QCOMPARE(m_log->lines(), QStringList()); // no thread had to be terminated
        m_log.reset();
    }

    void shouldListWhatItOffersInOrder()
    {
        const QMetaObject &type = HVVideoComponent::staticMetaObject;
        QCOMPARE(ownMethods(type, QMetaMethod::Signal),
                 QStringList(
                         { QStringLiteral("sourceChanged()"), QStringLiteral("stateChanged()"),
                           QStringLiteral("positionChanged()"), QStringLiteral("progressChanged()"),
                           QStringLiteral("heightChanged()"), QStringLiteral("searchPathChanged()"),
                           QStringLiteral("scrubbingChanged()"),
                           QStringLiteral("contentHeightChanged()"),
                           QStringLiteral("contentWidthChanged()"),
                           QStringLiteral("loadProgressChanged()") }));
        QCOMPARE(ownMethods(type, QMetaMethod::Slot),
                 QStringList({ QStringLiteral("frameReady()"), QStringLiteral("play()"),
                               QStringLiteral("pause()"), QStringLiteral("sourceChangedState()"),
                               QStringLiteral("rewindToStart()"),
                               QStringLiteral("controllerPositionChanged()") }));
        QStringList properties = ownProperties(type);
        for (QString &property : properties)
            property.remove(QStringLiteral("Hovlets::HVVideoComponent::"));
        QCOMPARE(properties,
                 QStringList({ QStringLiteral("QString source rw sourceChanged"),
                               QStringLiteral("VideoState state rw stateChanged"),
                               QStringLiteral("qlonglong position rw positionChanged"),
                               QStringLiteral("double progress rw progressChanged"),
                               QStringLiteral("QString searchPath rw searchPathChanged"),
                               QStringLiteral("bool scrubbing rw scrubbingChanged"),
                               QStringLiteral("double contentHeight r contentHeightChanged"),
                               QStringLiteral("double contentWidth r contentWidthChanged"),
                               QStringLiteral("double loadProgress r loadProgressChanged") }));
        const QMetaEnum states = QMetaEnum::fromType<HVVideoComponent::VideoState>();
        QCOMPARE(states.keyToValue("resetState"), 0);
        QCOMPARE(states.keyToValue("pausedState"), 1);
        QCOMPARE(states.keyToValue("playingState"), 2);
        QCOMPARE(states.keyCount(), 3);
    }

    void shouldBeginEmptyAndPaused()
    {
        const HVVideoComponent item;
        QVERIFY(item.flags() & QQuickItem::ItemHasContents);
        QCOMPARE(item.source(), QString());
        QCOMPARE(item.searchPath(), QString());
        QCOMPARE(item.state(), HVVideoComponent::pausedState);
        QCOMPARE(item.position(), 0LL);
        QCOMPARE(item.progress(), 0.0);
        QVERIFY(std::isnan(item.loadProgress()));
        QVERIFY(!item.scrubbing());
        QCOMPARE(item.contentWidth(), 200.0);
        QCOMPARE(item.contentHeight(), 150.0);
        const QList<QThread *> threads = item.findChildren<QThread *>();
        QCOMPARE(threads.size(), 2);
        QVERIFY(threads.at(0)->isRunning() && threads.at(1)->isRunning());
    }

    void shouldLoadNothingOutsideAWindow()
    {
        HVVideoComponent item;
        item.setSource(QStringLiteral("clip.avi"));
        QCOMPARE(item.source(), QString());
        item.play();
        item.setSource(QString());
        QCOMPARE(item.state(), HVVideoComponent::pausedState); // the controller goes to its start
    }

    void shouldMapTheStates()
    {
        HVVideoComponent item;
        HVVideoController *controller = controllerOf(&item);
        controller->quit(); // nothing else may change the state
        QSignalSpy told(&item, QOverload<>::of(&HVVideoComponent::stateChanged));
        item.setState(HVVideoComponent::playingState);
        QCOMPARE(item.state(), HVVideoComponent::playingState);
        item.setState(HVVideoComponent::pausedState);
        QCOMPARE(item.state(), HVVideoComponent::pausedState);
        item.play();
        QCOMPARE(controller->state(), HVVideoController::Playing);
        item.pause();
        QCOMPARE(controller->state(), HVVideoController::Paused);
        QCOMPARE(told.count(), 4);
        item.setState(static_cast<HVVideoComponent::VideoState>(3));
        QCOMPARE(told.count(), 4);
        controller->setState(static_cast<HVVideoController::State>(7));
        QCOMPARE(item.state(), HVVideoComponent::resetState);
    }

    void shouldResetUnlessItIsScrubbed()
    {
        HVVideoComponent item;
        controllerOf(&item)->quit();
        QSignalSpy scrubbing(&item, &HVVideoComponent::scrubbingChanged);
        QSignalSpy loading(&item, &HVVideoComponent::loadProgressChanged);
        item.setScrubbing(true);
        QVERIFY(item.scrubbing());
        QCOMPARE(scrubbing.count(), 0);
        item.play();
        item.setState(HVVideoComponent::resetState);
        QCOMPARE(item.state(), HVVideoComponent::playingState);
        QCOMPARE(loading.count(), 1);
        item.setScrubbing(false);
        item.setState(HVVideoComponent::resetState);
        QCOMPARE(item.state(), HVVideoComponent::pausedState);
        QCOMPARE(loading.count(), 2);
    }

    void shouldAnnounceTheSearchPathEachTime()
    {
        HVVideoComponent item;
        QSignalSpy told(&item, &HVVideoComponent::searchPathChanged);
        item.setSearchPath(QStringLiteral("a"));
        item.setSearchPath(QStringLiteral("a"));
        QCOMPARE(item.searchPath(), QStringLiteral("a"));
        QCOMPARE(told.count(), 2);
    }

    void shouldRewind()
    {
        load(QStringLiteral("testsrc=size=64x48:rate=25:duration=0.4"));
        m_item->setPosition(7);
        settle();
        m_item->play();
        controllerOf(m_item)->quit();
        SignalOrder seen;
        note(seen);
        m_item->rewindToStart();
        QCOMPARE(m_item->position(), 0LL);
        QCOMPARE(m_item->state(), HVVideoComponent::pausedState);
        const QString position = QStringLiteral("position");
        const QString progress = QStringLiteral("progress");
        QCOMPARE(seen.names(),
                 QStringList({ QStringLiteral("state"), position, progress, progress, position }));
    }

    void shouldAnnounceWhatItShows()
    {
        load(QStringLiteral("testsrc=size=64x48:rate=25:duration=0.4"));
        controllerOf(m_item)->quit();
        settle();
        SignalOrder seen;
        note(seen);
        m_item->frameReady(); // the same frame
        QCOMPARE(seen.take(), QStringList());
        controllerOf(m_item)->blockSignals(true);
        m_item->setPosition(5);
        controllerOf(m_item)->blockSignals(false);
        m_item->frameReady();
        const QString position = QStringLiteral("position");
        const QString progress = QStringLiteral("progress");
        QCOMPARE(seen.take(), QStringList({ progress, position }));
        QCOMPARE(m_item->progress(), 0.5);
        m_item->controllerPositionChanged();
        QCOMPARE(seen.take(), QStringList({ position, progress }));
        m_item->setProgress(1);
        QCOMPARE(seen.take(), QStringList({ position, progress }));
        m_item->frameReady(); // there is no frame
        QCOMPARE(seen.take(), QStringList());
        m_item->sourceChangedState();
        QCOMPARE(seen.take(), QStringList { QStringLiteral("state") });
    }

    void shouldRememberTheProgressThatItHasAnnounced()
    {
        load(QStringLiteral("testsrc=size=64x48:rate=25:duration=0.4"));
        controllerOf(m_item)->quit();
        settle();
        controllerOf(m_item)->blockSignals(true);
        m_item->setPosition(3);
        m_item->controllerPositionChanged();
        SignalOrder seen;
        note(seen);
        m_item->frameReady();
        controllerOf(m_item)->blockSignals(false);
        QCOMPARE(m_item->progress(), 0.3);
        QCOMPARE(seen.names(), QStringList());
    }

    void shouldAnnounceOnlyADifferentHeight()
    {
        m_popup->makeClip(QStringLiteral("other.avi"),
                          QStringLiteral("testsrc=size=64x32:rate=25:duration=0.2"));
        m_popup->makeClip(QStringLiteral("same.avi"),
                          QStringLiteral("testsrc=size=32x32:rate=25:duration=0.2"));
        show();
        SignalOrder seen;
        note(seen);
        int nested = 0;
        connect(m_item, QOverload<>::of(&HVVideoComponent::heightChanged), m_item, [&] {
            // The new height is unknown yet, and another frame with it announces itself again.
            if (++nested == 1)
                m_item->frameReady();
        });
        m_popup->makeClip(QStringLiteral("clip.avi"),
                          QStringLiteral("testsrc=size=64x48:rate=25:duration=0.2"));
        m_item->setSource(QStringLiteral("clip.avi"));
        QTRY_COMPARE(m_item->contentHeight(), 48.0);
        QTRY_COMPARE(seen.count(QStringLiteral("height")), 2);
        m_item->setSource(QStringLiteral("other.avi"));
        QTRY_COMPARE(m_item->contentHeight(), 32.0);
        QTRY_COMPARE(seen.count(QStringLiteral("height")), 3);
        m_item->setSource(QStringLiteral("same.avi"));
        QTRY_COMPARE(m_item->contentWidth(), 32.0);
        QTRY_VERIFY(m_popup->pixel(20, 20) != QColor(Qt::white)); // it is shown
        QCOMPARE(seen.count(QStringLiteral("height")), 3);
        QTRY_COMPARE(seen.count(QStringLiteral("contentWidth")), 3);
        QCOMPARE(seen.count(QStringLiteral("contentHeight")), 3);
    }

    void shouldClearThePictureForANameThatIsNotFound_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("plays");
        QTest::newRow("empty") << QString() << false;
        QTest::newRow("missing") << QStringLiteral("missing.avi") << true;
        QTest::newRow("folder") << QStringLiteral(".") << true;
        QTest::newRow("the same") << QStringLiteral("clip.avi") << false;
    }

    void shouldClearThePictureForANameThatIsNotFound()
    {
        QFETCH(QString, name);
        QFETCH(bool, plays);
        load(QStringLiteral("color=red:size=64x48:rate=25:duration=0.4"));
        const QUrl clip = controllerOf(m_item)->source();
        QCOMPARE(clip.fileName(), QStringLiteral("clip.avi"));
        QSignalSpy loaded(sourceOf(m_item), &HVVideoSource::sourceLoaded);
        QSignalSpy told(m_item, &HVVideoComponent::sourceChanged);
        controllerOf(m_item)->quit(); // no more frames arrive
        m_item->setPosition(3);
        controllerOf(m_item)->setState(HVVideoController::Playing);
        m_item->setSource(name);
        QCOMPARE(m_item->source(), name);
        QCOMPARE(m_popup->pixel(20, 20), QColor(Qt::white));
        QCOMPARE(m_item->state() == HVVideoComponent::playingState, plays);
        QCOMPARE(m_item->position(), plays ? 3LL : 0LL);
        QCOMPARE(controllerOf(m_item)->source(), clip);
        QCOMPARE(m_item->contentWidth(), 64.0);
        settle();
        QCOMPARE(loaded.count(), 0);
        QCOMPARE(told.count(), 0);
    }

    void shouldPaintEachPixelFromTheCorner()
    {
        m_popup->makeClip(QStringLiteral("clip.avi"),
                          QStringLiteral("color=red:size=64x48:rate=25:duration=0.2,format=rgb24,"
                                         "drawbox=0:0:32:24:lime:fill,drawbox=63:47:1:1:blue"));
        show("x: 30; y: 40; width: 5; height: 6");
        m_item->setSource(QStringLiteral("clip.avi"));
        QTRY_COMPARE(m_popup->pixel(40, 50), QColor(Qt::green));
        QImage expected(m_popup->picture().size(), QImage::Format_RGB32);
        expected.fill(Qt::white);
        for (int y = 0; y < 48; ++y) {
            for (int x = 0; x < 64; ++x)
                expected.setPixelColor(30 + x, 40 + y, x < 32 && y < 24 ? Qt::green : Qt::red);
        }
        expected.setPixelColor(93, 87, Qt::blue);
        QCOMPARE(m_popup->picture().convertToFormat(QImage::Format_RGB32), expected);
        m_item->setSize(QSizeF(200, 150)); // makes no difference
        QCOMPARE(m_popup->picture().convertToFormat(QImage::Format_RGB32), expected);
    }

    void shouldSmoothOnlyScaledFrames()
    {
        load(QmlPopup::columns());
        const QSizeF size(64, 48);
        const double ratio = m_popup->picture().devicePixelRatio();
        QQuickItem *root = m_popup->view()->rootObject();
        root->setTransformOrigin(QQuickItem::TopLeft);
        root->setScale(1 / ratio);
        QCOMPARE(m_popup->shareOfGreys(*m_item, size), 0.0);
        m_item->setX(10.3); // between pixels
        QCOMPARE(m_popup->shareOfGreys(*m_item, size), 0.0);
        for (const double scale : { 0.75, 1.25, 1.5, 2.0 }) {
            root->setScale(scale / ratio);
            QVERIFY(m_popup->shareOfGreys(*m_item, size) > 0.2);
        }
        root->setScale(1 / ratio);
        QCOMPARE(m_popup->shareOfGreys(*m_item, size), 0.0);
        m_item->setScale(1.5);
        QVERIFY(m_popup->shareOfGreys(*m_item, size) > 0.2);
    }

    void shouldPlayToTheEnd()
    {
        load(QStringLiteral("color=red:size=64x48:rate=50:duration=0.4,format=rgb24,"
                            "drawbox=0:0:64:48:blue:fill:enable='gte(n,19)'"));
        SignalOrder seen;
        note(seen);
        m_item->play();
        QTRY_COMPARE(m_item->position(), 20LL);
        QTRY_COMPARE(m_item->state(), HVVideoComponent::pausedState);
        QTRY_COMPARE(m_popup->pixel(20, 20), QColor(Qt::blue));
        QCOMPARE(m_item->progress(), 1.0);
        QCOMPARE(m_item->loadProgress(), 1.0);
        QTRY_COMPARE(seen.count(QStringLiteral("state")), 2);
        m_item->rewindToStart();
        QTRY_COMPARE(m_popup->pixel(20, 20), QColor(Qt::red));
    }

    void shouldBeUsedFromQml()
    {
        load(QStringLiteral("color=red:size=64x48:rate=25:duration=10"),
             "onStateChanged: seen += state; property string seen");
        m_item->setProperty("state", 2);
        QCOMPARE(m_item->state(), HVVideoComponent::playingState);
        QVERIFY(QMetaObject::invokeMethod(m_item, "pause"));
        QCOMPARE(m_item->property("state").toInt(), 1);
        QTRY_VERIFY(m_item->property("seen").toString().endsWith(QStringLiteral("21")));
    }

private:
    static HVVideoController *controllerOf(HVVideoComponent *item)
    {
        auto *controller = item->findChild<HVVideoController *>();
        // Tests end the thread early, but the object must live as long as the item.
        disconnect(controller, &QThread::finished, controller, &QObject::deleteLater);
        return controller;
    }

    static HVVideoSourceFFMPEG *sourceOf(HVVideoComponent *item)
    {
        return item->findChild<HVVideoSourceFFMPEG *>();
    }

    static void settle()
    {
        for (int i = 0; i < 5; ++i)
            QCoreApplication::processEvents();
    }

    void show(const QByteArray &properties = QByteArray())
    {
        m_popup->show("HVVideoComponent { objectName: 'clip'\n" + properties + " }");
        m_item = m_popup->item<HVVideoComponent>("clip");
    }

    /// Shows the first frame of a clip that is decoded completely.
    void load(const QString &pictures, const QByteArray &properties = QByteArray())
    {
        m_popup->makeClip(QStringLiteral("clip.avi"), pictures);
        show(properties);
        QSignalSpy ended(sourceOf(m_item), &HVVideoSource::streamEnded);
        QVERIFY(m_popup->pixel(20, 20) == QColor(Qt::white));
        m_item->setSource(QStringLiteral("clip.avi"));
        QCOMPARE(m_item->source(), QStringLiteral("clip.avi"));
        QTRY_COMPARE(ended.count(), 1);
        QTRY_VERIFY(m_popup->pixel(20, 20) != QColor(Qt::white));
        settle();
    }

    void note(SignalOrder &seen)
    {
        HVVideoComponent *i = m_item;
        seen.note(i, QOverload<>::of(&HVVideoComponent::stateChanged), QStringLiteral("state"));
        seen.note(i, &HVVideoComponent::positionChanged, QStringLiteral("position"));
        seen.note(i, &HVVideoComponent::progressChanged, QStringLiteral("progress"));
        seen.note(i, QOverload<>::of(&HVVideoComponent::heightChanged), QStringLiteral("height"));
        seen.note(i, &HVVideoComponent::contentWidthChanged, QStringLiteral("contentWidth"));
        seen.note(i, &HVVideoComponent::contentHeightChanged, QStringLiteral("contentHeight"));
    }

    std::unique_ptr<DebugLog> m_log;
    std::unique_ptr<QmlPopup> m_popup;
    HVVideoComponent *m_item = nullptr;
};

HOVLETS_TEST_MAIN(tst_HVVideoComponent)
#include "tst_hvvideocomponent.moc"
