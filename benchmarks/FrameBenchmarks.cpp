// SPDX-License-Identifier: Apache-2.0
#include "BenchmarkClip.h"
#include "Comparisons.h"
#include "GeneratedContent.h"
#include "HVContext.h"
#include "HVInterface.h"
#include "HVManager.h"
#include "HVVideoComponent.h"
#include "HVVideoController.h"
#include "HVView.h"
#include "HVWidget.h"
#include "Suites.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDeadlineTimer>
#include <QtCore/QFile>
#include <QtCore/QTimer>
#include <QtGui/QImage>
#include <QtQuick/QQuickWindow>
#include <QtQuick/QSGImageNode>
#include <QtQuickWidgets/QQuickWidget>

#include <ctime>
#include <memory>

using namespace Hovlets;

namespace {

constexpr int Steps = 60; // frames shown per iteration
constexpr int Patience = 60000; // ms

/// Processor time of the calling thread in seconds.
double threadSeconds()
{
    timespec time = {};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

template <typename Condition> bool waitUntil(Condition isMet)
{
    const QDeadlineTimer deadline(Patience);
    QTimer wakeUp; // for changes on another thread, which come without an event
    wakeUp.start(1);
    while (!isMet() && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return isMet();
}

/// A popup that contains only a decoded clip.
class ClipPopup
{
public:
    explicit ClipPopup(const QString &clip)
        : m_content(1, 1000, 1)
    {
        const QString package = m_content.packageFolder(0);
        GeneratedContent::write(package + QStringLiteral("/ui/HovletsUI.qml"),
                                "import QtQuick 2.15\n"
                                "import QtQuick.Window 2.15\n"
                                "import com.zandor.hovlets.qml 1.0\n"
                                "Item {\n"
                                "    width: 640; height: 360\n"
                                "    HVVideoComponent { source: Window.window ? 'clip.mp4' : '' }\n"
                                "}\n");
        GeneratedContent::write(package + QStringLiteral("/Resources/clip.mp4"), {});
        QFile::remove(package + QStringLiteral("/Resources/clip.mp4"));
        QFile::copy(clip, package + QStringLiteral("/Resources/clip.mp4"));
        HVContext context;
        context.set(HVKeyHideDelay, 0);
        m_host = std::make_unique<HVInterface>(context, QStringList());
        m_manager = std::make_unique<HVManager>(m_host.get(), context,
                                                QStringList { m_content.path() }, nullptr);
        m_manager->show(GeneratedContent::key(0, 0), QPoint(100, 100), nullptr);
    }

    QQuickWidget *view() { return popup()->view(); }

    /// Null if the clip did not load.
    HVVideoComponent *video()
    {
        QQuickItem *root = popup()->view()->rootObject();
        auto *video = root ? root->findChild<HVVideoComponent *>() : nullptr;
        if (!video || !waitUntil([video] { return video->loadProgress() == 1; }))
            return nullptr;
        // Every position belongs to a decoded frame.
        const bool isDecoded = waitUntil([video] {
            video->setPosition(Steps);
            return video->position() == Steps;
        });
        return isDecoded ? video : nullptr;
    }

private:
    HVWidget *popup() { return m_manager->widget(); }

    GeneratedContent m_content;
    std::unique_ptr<HVInterface> m_host;
    std::unique_ptr<HVManager> m_manager;
};

/// Shows an image, and does nothing else.
class ImageItem : public QQuickItem
{
public:
    ImageItem() { setFlag(ItemHasContents); }

    void setImage(const QImage &image)
    {
        m_image = image;
        update();
    }

protected:
    QSGNode *updatePaintNode(QSGNode *old, UpdatePaintNodeData *) override
    {
        auto *node = static_cast<QSGImageNode *>(old);
        if (!node) {
            node = window()->createImageNode();
            node->setOwnsTexture(true);
        }
        node->setTexture(window()->createTextureFromImage(m_image));
        node->setRect(QRectF(QPointF(), m_image.size()));
        return node;
    }

private:
    QImage m_image;
};

void showFrames(benchmark::State &state, BenchmarkClip &clip)
{
    ClipPopup popup(clip.path());
    HVVideoComponent *video = popup.video();
    if (!video) {
        state.SkipWithError("the clip was not shown");
        return;
    }
    // Connected after the item, which therefore has the frame by then.
    bool isTold = false;
    QObject::connect(video->findChild<HVVideoController *>(), &HVVideoController::displayFrame,
                     video, [&isTold] { isTold = true; });
    for (auto _ : state) {
        const double start = threadSeconds();
        for (int frame = 0; frame < Steps; ++frame) {
            isTold = false;
            video->setPosition(frame);
            if (!waitUntil([&isTold] { return isTold; }))
                state.SkipWithError("a frame was not shown");
            popup.view()->grabFramebuffer();
        }
        state.SetIterationTime((threadSeconds() - start) / Steps);
    }
}

void showImages(benchmark::State &state)
{
    QQuickWidget widget;
    widget.resize(BenchmarkClip::Width, BenchmarkClip::Height);
    ImageItem item;
    item.setParentItem(widget.quickWindow()->contentItem());
    widget.show();
    std::vector<QImage> images;
    for (int index = 0; index < Steps; ++index) {
        images.emplace_back(BenchmarkClip::Width, BenchmarkClip::Height, QImage::Format_RGB32);
        images.back().fill(qRgb(4 * index, 128, 255 - 4 * index));
    }
    for (auto _ : state) {
        const double start = threadSeconds();
        for (const QImage &image : images) {
            item.setImage(image);
            QCoreApplication::processEvents();
            widget.grabFramebuffer();
        }
        state.SetIterationTime((threadSeconds() - start) / Steps);
    }
}

} // namespace

void registerFrameBenchmarks(Comparisons &comparisons, const std::shared_ptr<BenchmarkClip> &clip)
{
    const std::string group = "frame shown, GUI thread/";
    const auto add = [](const std::string &name, auto run) {
        benchmark::RegisterBenchmark(name.c_str(), run)
                ->Unit(benchmark::kMillisecond)
                ->UseManualTime()
                ->Iterations(1);
    };
    add(group + "Hovlets", [clip](benchmark::State &state) { showFrames(state, *clip); });
    add(group + "bare item", [](benchmark::State &state) { showImages(state); });
    comparisons.add(group + "Hovlets", { group + "bare item" }, Comparisons::NoLimit);
}
