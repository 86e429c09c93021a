// SPDX-License-Identifier: Apache-2.0
#include "DebugLog.h"
#include "HVVideoComponent.h"
#include "HVVideoController.h"
#include "HVVideoSourceFFMPEG.h"
#include "HVWidget.h"
#include "QmlPopup.h"
#include "TestMain.h"

#include <QtQuick/QQuickWindow>
#include <QtQuick/QSGImageNode>

using namespace Hovlets;

namespace {

/// Counts how often it is painted, and how often with a new texture.
class CountingItem : public HVVideoComponent
{
public:
    using HVVideoComponent::HVVideoComponent;

    int painted = 0;
    int uploaded = 0;
    QPointer<QSGTexture> texture;
    QList<QPointer<QSGTexture>> replaced;

protected:
    QSGNode *updatePaintNode(QSGNode *node, UpdatePaintNodeData *data) override
    {
        const QPointer<QSGTexture> before = texture;
        QSGNode *result = HVVideoComponent::updatePaintNode(node, data);
        texture = result ? static_cast<QSGImageNode *>(result)->texture() : nullptr;
        ++painted;
        if (texture != before) {
            uploaded += texture ? 1 : 0;
            replaced += before;
        }
        return result;
    }
};

} // namespace

/// Tests many clips at once, and clips that could block something else.
class tst_HVVideoComponentMany : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_log = std::make_unique<DebugLog>();
        m_popup = std::make_unique<QmlPopup>();
        m_popup->makeClip(QStringLiteral("red.avi"),
                          QStringLiteral("color=red:size=320x240:rate=50:duration=4"));
        m_popup->makeClip(QStringLiteral("blue.avi"),
                          QStringLiteral("color=blue:size=320x240:rate=50:duration=4"));
    }

    void cleanup()
    {
        m_popup.reset();
        QCOMPARE(m_log->lines(), QStringList()); // no thread had to be terminated
        m_log.reset();
    }

    void shouldUploadEachFrameOnce()
    {
        m_popup->show("");
        auto *item = new CountingItem(m_popup->view()->rootObject());
        const auto *controller = item->findChild<HVVideoController *>();
        QSignalSpy told(controller, &HVVideoController::loadProgressChanged);
        item->setSource(QStringLiteral("red.avi"));
        QTRY_VERIFY(isRed(m_popup->pixel(20, 20)));
        QTRY_COMPARE(item->uploaded, 1);
        const int painted = item->painted;
        item->update();
        m_popup->picture();
        QVERIFY(item->painted > painted);
        QCOMPARE(item->uploaded, 1);

        // For the request, for loading, and for the end of the stream, which pauses.
        QTRY_COMPARE_WITH_TIMEOUT(told.count(), 3, 60000);
        item->play();
        QTRY_VERIFY(item->uploaded > 5);
        item->pause();
        QVERIFY(item->uploaded <= static_cast<int>(controller->position()) + 1);
        for (const auto &texture : std::as_const(item->replaced))
            QVERIFY(!texture);
    }

    void shouldFreeItsTextureWithTheFrame()
    {
        m_popup->show("");
        auto *item = new CountingItem(m_popup->view()->rootObject());
        item->setSource(QStringLiteral("red.avi"));
        QTRY_COMPARE(item->uploaded, 1);
        item->findChild<HVVideoController *>()->pause();
        const QPointer<QSGTexture> texture = item->texture;
        QVERIFY(texture);
        item->setSource(QStringLiteral("missing.avi"));
        m_popup->picture();
        QVERIFY(!texture);
        QCOMPARE(m_popup->pixel(20, 20), QColor(Qt::white));
    }

    void shouldEndManyWhileTheyDecode()
    {
        m_popup->show("");
        for (int i = 0; i < 200; ++i) {
            const auto item = std::make_unique<HVVideoComponent>(m_popup->view()->rootObject());
            item->setSource(i % 2 ? QStringLiteral("red.avi") : QStringLiteral("blue.avi"));
            item->play();
            if (i % 20 == 0) {
                const auto *source = item->findChild<HVVideoSourceFFMPEG *>();
                QTRY_VERIFY(source->isFrameAvailable(0));
            }
        }
    }

    void shouldShowManyAtOnce()
    {
        m_popup->show("Repeater { model: 20; HVVideoComponent { x: index; y: index } }");
        const auto all = itemsOf(m_popup->view()->rootObject());
        QCOMPARE(all.size(), 20);
        for (HVVideoComponent *item : all) {
            item->setSource(QStringLiteral("red.avi"));
            item->play();
        }
        for (HVVideoComponent *item : all)
            QTRY_COMPARE(item->contentWidth(), 320.0);
    }

    void shouldShowTheLastOfManySources()
    {
        m_popup->makeClip(QStringLiteral("green.avi"),
                          QStringLiteral("color=lime:size=32x32:rate=50:duration=1,format=rgb24,"
                                         "drawbox=0:0:32:32:lime:fill"));
        m_popup->show("HVVideoComponent { objectName: 'clip' }");
        auto *item = m_popup->item<HVVideoComponent>("clip");
        for (int i = 0; i < 200; ++i) {
            item->setSource(i % 2 ? QStringLiteral("red.avi") : QStringLiteral("blue.avi"));
            if (i % 3 == 0)
                item->play();
            if (i % 7 == 0)
                QCoreApplication::processEvents();
        }
        item->setSource(QStringLiteral("green.avi"));
        const auto *source = item->findChild<HVVideoSourceFFMPEG *>();
        QTRY_COMPARE_WITH_TIMEOUT(source->source().fileName(), QStringLiteral("green.avi"), 60000);
        QTRY_COMPARE(m_popup->pixel(20, 20), QColor(Qt::green));
    }

    void shouldPlayInTwoPinnedPopups()
    {
        const QByteArray body("HVVideoComponent { objectName: 'clip' }");
        m_popup->show(body);
        auto *first = m_popup->item<HVVideoComponent>("clip");
        first->setSource(QStringLiteral("red.avi"));
        const QPointer<HVWidget> firstPopup = m_popup->popup();
        firstPopup->view()->setReserved(true);
        QVERIFY(m_popup->HoverBench::show(QStringLiteral("b")));
        const QPointer<HVWidget> secondPopup = m_popup->popup();
        QVERIFY(firstPopup != secondPopup);
        auto *second = m_popup->item<HVVideoComponent>("clip");
        second->setSource(QStringLiteral("blue.avi"));
        secondPopup->view()->setReserved(true);
        for (HVVideoComponent *item : { first, second }) {
            QTRY_VERIFY(item->loadProgress() == 1.0);
            item->play();
        }
        const auto play = [](HVVideoComponent *item) {
            if (item->state() != HVVideoComponent::playingState)
                item->play(); // the decoder was slower
            return item->position() > 5;
        };
        QTRY_VERIFY(play(first) && play(second));
        QVERIFY(isRed(firstPopup->view()->grabFramebuffer().pixelColor(20, 20)));
        QVERIFY(isBlue(secondPopup->view()->grabFramebuffer().pixelColor(20, 20)));
        delete firstPopup;
        const qlonglong there = second->position();
        QTRY_VERIFY(play(second) && second->position() != there);
        delete secondPopup;
    }

    void shouldCloseWhileAClipPlays_data()
    {
        QTest::addColumn<int>("way");
        QTest::newRow("other content") << 0;
        QTest::newRow("popup deleted") << 1;
        QTest::newRow("host deleted") << 2;
        QTest::newRow("hidden and shown") << 3;
    }

    void shouldCloseWhileAClipPlays()
    {
        QFETCH(int, way);
        m_popup->show("HVVideoComponent { objectName: 'clip' }");
        const QPointer<HVVideoComponent> item = m_popup->item<HVVideoComponent>("clip");
        item->setSource(QStringLiteral("red.avi"));
        QTRY_COMPARE(item->loadProgress(), 1.0);
        item->play();
        QTRY_VERIFY(item->position() > 0);
        switch (way) {
        case 0:
            m_popup->view()->loadQML(m_popup->folder.add(QStringLiteral("Other.qml"),
                                                         PackageFolder::userInterface(50, 50)));
            break;
        case 1:
            delete m_popup->popup();
            break;
        case 2:
            m_popup->host.reset();
            break;
        default:
            m_popup->popup()->hide();
            QCoreApplication::processEvents();
            QVERIFY(m_popup->HoverBench::show());
            QTRY_VERIFY(isRed(m_popup->pixel(20, 20)));
            return;
        }
        QTRY_VERIFY(!item);
    }

    /// A decoder at full speed must not block the user interface with its locks.
    void shouldLeaveTheUserInterfaceFreeWhileItDecodes()
    {
        m_popup->makeClip(QStringLiteral("large.avi"),
                          QStringLiteral("testsrc=size=1280x720:rate=25:duration=6"));
        m_popup->show("HVVideoComponent { objectName: 'clip' }");
        auto *item = m_popup->item<HVVideoComponent>("clip");
        const auto *source = item->findChild<HVVideoSourceFFMPEG *>();
        item->setSource(QStringLiteral("large.avi"));
        QTRY_VERIFY(source->isFrameAvailable(0));
        int asked = 0;
        while (source->loadedFrameCount() < 100) {
            item->play();
            QVERIFY(item->contentWidth() > 0 && item->position() >= 0 && item->progress() >= 0);
            QCoreApplication::processEvents();
            ++asked;
        }
        QVERIFY2(asked > 100, qPrintable(QString::number(asked)));
    }

private:
    static bool isBlue(const QColor &colour)
    {
        return colour.blue() > 250 && colour.green() < 5 && colour.red() < 5;
    }

    static QList<HVVideoComponent *> itemsOf(const QQuickItem *root)
    {
        QList<HVVideoComponent *> items;
        const auto children = root->childItems();
        for (QQuickItem *child : children) {
            if (auto *item = qobject_cast<HVVideoComponent *>(child))
                items += item;
        }
        return items;
    }

    std::unique_ptr<DebugLog> m_log;
    std::unique_ptr<QmlPopup> m_popup;
};

HOVLETS_TEST_MAIN(tst_HVVideoComponentMany)
#include "tst_hvvideocomponent_many.moc"
