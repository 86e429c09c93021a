// SPDX-License-Identifier: Apache-2.0
#include "BenchmarkClip.h"
#include "Comparisons.h"
#include "GeneratedContent.h"
#include "HVClip.h"
#include "HVContext.h"
#include "HVInterface.h"
#include "HVManager.h"
#include "HVVideoComponent.h"
#include "HVView.h"
#include "HVWidget.h"
#include "Suites.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEventLoop>
#include <QtCore/QFile>
#include <QtCore/QTimer>
#include <QtGui/QImage>
#include <QtQuick/QQuickWindow>
#include <QtQuick/QSGImageNode>
#include <QtQuickWidgets/QQuickWidget>

#include <ctime>
#include <memory>
#include <vector>

using namespace Hovlets;

namespace {

constexpr int Frames = 60; // shown per repetition, 2 s of the clip
constexpr int Patience = 20000; // ms

/// Processor time of the calling thread in seconds.
double threadSeconds()
{
    timespec time = {};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

/// Runs the event loop until the view has rendered \a count frames. Returns whether it has.
bool runFrames(const QQuickWidget &view, int count)
{
    QEventLoop loop;
    QTimer::singleShot(Patience, &loop, &QEventLoop::quit);
    QObject::connect(view.quickWindow(), &QQuickWindow::afterRendering, &loop, [&] {
        if (--count == 0)
            loop.quit();
    });
    loop.exec();
    return count <= 0;
}

/// Sets the processor time that this thread spends on each frame while something plays in \a view,
/// including its event loop.
void timeFrames(benchmark::State &state, const QQuickWidget &view)
{
    for (auto _ : state) {
        bool isShown = runFrames(view, 3); // what starting leaves to do
        const double start = threadSeconds();
        isShown = isShown && runFrames(view, Frames);
        state.SetIterationTime((threadSeconds() - start) / Frames);
        if (!isShown)
            state.SkipWithError("the clip was not shown");
    }
}

/// The clip at \a item or below it; null if there is none.
HVVideoComponent *findVideo(QQuickItem *item)
{
    auto *video = qobject_cast<HVVideoComponent *>(item);
    const QList<QQuickItem *> children = item ? item->childItems() : QList<QQuickItem *>();
    for (auto child = children.begin(); child != children.end() && !video; ++child)
        video = findVideo(*child);
    return video;
}

/// A popup with the default user interface, or with one that shows only the clip.
class ClipPopup
{
public:
    enum UserInterface { Default, ClipAlone };

    ClipPopup(const QString &clip, UserInterface userInterface)
        : m_content(1, 1000, 1)
    {
        const QString package = m_content.packageFolder(0);
        GeneratedContent::write(package + QStringLiteral("/Control/clip.xml"),
                                "<hovlets><hovlet key=\"clip\" title=\"Title\" clip=\"clip.mp4\" "
                                "loop=\"true\"><p>A few words below it.</p></hovlet></hovlets>");
        if (userInterface == ClipAlone) {
            GeneratedContent::write(package + QStringLiteral("/ui/HovletsUI.qml"),
                                    "import QtQuick 2.15\n"
                                    "import QtQuick.Window 2.15\n"
                                    "import com.zandor.hovlets.qml 1.0\n"
                                    "HVVideoComponent {\n"
                                    "    width: contentWidth; height: contentHeight\n"
                                    "    source: Window.window ? 'clip.mp4' : ''\n"
                                    "    onLoadProgressChanged: if (loadProgress === 1) play()\n"
                                    "}\n");
        }
        const QString copy = package + QStringLiteral("/Resources/clip.mp4");
        GeneratedContent::write(copy, {});
        QFile::remove(copy);
        QFile::copy(clip, copy);
        HVContext context;
        useRecommendedSettings(context);
        context.set(HVKeyHideDelay, 0);
        context.set(HVKeyExtraComponentPath, QStringLiteral(HOVLETS_PACKAGES "/Default.hovlets"));
        m_host = std::make_unique<HVInterface>(context, QStringList());
        m_manager = std::make_unique<HVManager>(m_host.get(), context,
                                                QStringList { m_content.path() }, nullptr);
        m_manager->show(QStringLiteral("clip"), QPoint(100, 100), nullptr);
    }

    QQuickWidget &view() { return *m_manager->widget()->view(); }

    /// The size of a pixel; 0 if the clip does not play.
    qreal play()
    {
        auto *video = findVideo(view().rootObject());
        if (!video)
            return 0;
        QEventLoop loop;
        QTimer::singleShot(Patience, &loop, &QEventLoop::quit);
        const auto check = [&] {
            if (video->loadProgress() == 1 && video->state() == HVVideoComponent::playingState)
                loop.quit();
        };
        QObject::connect(video, &HVVideoComponent::stateChanged, &loop, check);
        QObject::connect(video, &HVVideoComponent::loadProgressChanged, &loop, check);
        QMetaObject::invokeMethod(&loop, check, Qt::QueuedConnection);
        loop.exec();
        return video->state() == HVVideoComponent::playingState ? video->scale() : 0;
    }

private:
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
            node->setFiltering(scale() == 1 ? QSGTexture::Nearest : QSGTexture::Linear);
        }
        node->setTexture(window()->createTextureFromImage(m_image));
        node->setRect(QRectF(QPointF(), m_image.size()));
        return node;
    }

private:
    QImage m_image;
};

std::vector<QImage> firstFrames(const QString &path)
{
    HVClip clip([] { return false; });
    std::vector<QImage> frames;
    if (clip.open(path))
        return frames; // an error
    while (frames.size() < Frames) {
        frames.push_back(clip.nextFrame());
        if (frames.back().isNull())
            return {};
    }
    return frames;
}

using Clip = std::shared_ptr<BenchmarkClip>;

void playInPopup(benchmark::State &state, BenchmarkClip &clip,
                 ClipPopup::UserInterface userInterface, qreal &scale)
{
    ClipPopup popup(clip.path(), userInterface);
    scale = popup.play();
    if (scale <= 0)
        state.SkipWithError("the clip does not play");
    else
        timeFrames(state, popup.view());
}

/// The same frames in a bare item in a bare widget, one whenever the next is due.
void playInItem(benchmark::State &state, BenchmarkClip &clip, const qreal &scale)
{
    const std::vector<QImage> frames = firstFrames(clip.path());
    if (frames.empty() || scale <= 0) {
        state.SkipWithError("no frames");
        return;
    }
    QQuickWidget widget;
    widget.setWindowFlags(Qt::ToolTip);
    widget.resize(frames.front().size() * scale);
    ImageItem item;
    item.setTransformOrigin(QQuickItem::TopLeft);
    item.setSize(frames.front().size());
    item.setScale(scale);
    item.setParentItem(widget.quickWindow()->contentItem());
    widget.show();

    QTimer timer;
    timer.setTimerType(Qt::PreciseTimer);
    std::size_t next = 0;
    QObject::connect(&timer, &QTimer::timeout, &item,
                     [&] { item.setImage(frames[next++ % frames.size()]); });
    timer.start(1000 / BenchmarkClip::FrameRate);
    timeFrames(state, widget);
}

/// Compares \a userInterface with a bare item that shows the frames at the same size.
void registerPlaying(Comparisons &comparisons, const std::string &name, const Clip &clip,
                     ClipPopup::UserInterface userInterface, double limit)
{
    const auto scale = std::make_shared<qreal>(0);
    const auto add = [&name](const char *who, const auto &run) {
        benchmark::RegisterBenchmark((name + who).c_str(), run)
                ->Unit(benchmark::kMillisecond)
                ->UseManualTime()
                ->Iterations(1);
        return name + who;
    };
    const std::string ours = add("/Hovlets", [clip, userInterface, scale](benchmark::State &state) {
        playInPopup(state, *clip, userInterface, *scale);
    });
    const std::string peer =
            add("/bare item", [clip, userInterface, scale](benchmark::State &state) {
                if (*scale <= 0) // repetitions run in any order
                    *scale = ClipPopup(clip->path(), userInterface).play();
                playInItem(state, *clip, *scale);
            });
    comparisons.add(ours, { peer }, limit);
}

} // namespace

void registerFrameBenchmarks(Comparisons &comparisons, const Clip &clip)
{
    constexpr double Target = 1.3;
    const auto small = std::make_shared<BenchmarkClip>(QSize(256, 144));
    registerPlaying(comparisons, "frame shown, GUI thread, small", small, ClipPopup::Default,
                    Target);
    registerPlaying(comparisons, "frame shown, GUI thread, scaled", clip, ClipPopup::Default,
                    Target);
    registerPlaying(comparisons, "frame shown, GUI thread, alone", clip, ClipPopup::ClipAlone,
                    Target);
}
