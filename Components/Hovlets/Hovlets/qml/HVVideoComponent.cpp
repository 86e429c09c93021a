// SPDX-License-Identifier: Apache-2.0
#include "HVVideoComponent.h"

#include "HVClipOpening.h"
#include "HVFrameRelease.h"
#include "HVIdleWait.h"
#include "HVImageNode.h"
#include "HVThreadKeeper.h"
#include "HVVideoController.h"
#include "HVVideoSourceFFMPEG.h"
#include "HVView.h"

#include <QtCore/QFileInfo>
#include <QtCore/QUrl>
#include <QtQuick/QQuickWindow>
#include <QtQuick/QSGImageNode>
#include <QtQuick/QSGRendererInterface>

namespace Hovlets {

namespace {

constexpr int LongestWait = 60; // ms; it usually takes about 15, and users notice more than 100

/*!
 * The frame itself, or every second or third of its pixels and rows if it is larger than screens.
 *
 * The GUI thread uploads the result to the graphics card, which takes 3 ms per million pixels. The
 * software renderer paints from the frame itself.
 */
QImage pixelsToUpload(const QImage &frame, const QQuickWindow &window)
{
    if (window.rendererInterface()->graphicsApi() == QSGRendererInterface::Software)
        return frame;
    constexpr qint64 MostPixels = qint64 { 4096 } * 4096;
    int step = 1;
    while (qint64 { frame.width() / step } * (frame.height() / step) > MostPixels)
        ++step;
    if (step == 1)
        return frame;
    QImage image(frame.width() / step, frame.height() / step, frame.format());
    for (int y = 0; y < image.height(); ++y) {
        const auto *from = reinterpret_cast<const QRgb *>(frame.constScanLine(y * step));
        auto *to = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x)
            to[x] = from[qint64 { x } * step];
    }
    return image;
}

} // namespace

HVVideoComponent::HVVideoComponent(QQuickItem *parent)
    : QQuickItem(parent)
    , m_source(new HVVideoSourceFFMPEG(this))
    , m_controller(new HVVideoController(m_source, this))
    , m_frameWait(std::make_shared<HVIdleWait>())
{
    setFlag(QQuickItem::ItemHasContents);
    connect(m_controller, &HVVideoController::displayFrame, this, &HVVideoComponent::frameReady);
    connect(m_controller, &HVVideoController::stateChanged, this,
            &HVVideoComponent::sourceChangedState);
    connect(m_controller, &HVVideoController::positionChanged, this,
            &HVVideoComponent::controllerPositionChanged);
    connect(m_controller, &HVVideoController::heightChanged, this,
            &HVVideoComponent::contentHeightChanged);
    connect(m_controller, &HVVideoController::widthChanged, this,
            &HVVideoComponent::contentWidthChanged);
    connect(m_controller, &HVVideoController::loadProgressChanged, this,
            &HVVideoComponent::loadProgressChanged);
    connect(m_source, &HVVideoSource::streamEnded, this, [this] { m_whole = m_source->source(); });
    m_source->addFrameWaiter(m_frameWait);
    new HVFrameRelease(this, m_controller);
    m_controller->start(QThread::InheritPriority);
    m_source->start(QThread::InheritPriority);
}

HVVideoComponent::~HVVideoComponent()
{
    // FFmpeg may need time, for which the user interface must not wait.
    HVThreadKeeper::keep(m_controller, m_source);
}

QString HVVideoComponent::source() const
{
    return m_sourceName;
}

void HVVideoComponent::setSource(const QString &name)
{
    m_requested.clear();
    if (name.isEmpty()) {
        m_controller->setSource(QUrl(name));
        m_sourceName = name;
    }
    const QList<HVView *> views = HVView::viewsOf(window());
    for (HVView *view : views) {
        const QString path = view->findResource(name);
        m_sourceName = name;
        if (QFileInfo(path).isFile()) {
            m_requested = QUrl::fromLocalFile(path);
            m_controller->setSource(m_requested);
        }
        setFrame(HVVideoFrame());
    }
}

HVVideoComponent::SizeState HVVideoComponent::awaitSize()
{
    if (m_requested.isEmpty())
        return SizeState::None;
    const auto end = std::chrono::system_clock::now() + std::chrono::milliseconds(LongestWait);
    switch (m_source->opening().wait(m_requested, LongestWait)) {
    case HVClipOpening::State::Pending:
        return SizeState::Pending;
    case HVClipOpening::State::Failed:
        return SizeState::None;
    case HVClipOpening::State::Opened:
        awaitFirstFrame(end);
        break;
    }
    Q_EMIT contentWidthChanged();
    Q_EMIT contentHeightChanged();
    return SizeState::Known;
}

void HVVideoComponent::awaitFirstFrame(std::chrono::system_clock::time_point end)
{
    while (!m_source->isFrameAvailable(0)) {
        m_source->awaitsFrame(0); // it may have been freed
        if (std::chrono::system_clock::now() >= end)
            return;
        m_frameWait->sleepUntil(end);
    }
    setFrame(m_source->getFrame(0));
}

HVClipOpening &HVVideoComponent::opening()
{
    return m_source->opening();
}

HVVideoComponent::VideoState HVVideoComponent::state() const
{
    switch (m_controller->state()) {
    case HVVideoController::Paused:
        return pausedState;
    case HVVideoController::Playing:
        return playingState;
    }
    return resetState;
}

void HVVideoComponent::setState(VideoState state)
{
    switch (state) {
    case resetState:
        m_controller->streamEnded();
        break;
    case pausedState:
        pause();
        break;
    case playingState:
        play();
        break;
    }
}

void HVVideoComponent::play()
{
    m_controller->play();
}

void HVVideoComponent::pause()
{
    m_controller->pause();
}

void HVVideoComponent::rewindToStart()
{
    m_controller->pause();
    m_controller->setProgress(0.0);
    Q_EMIT progressChanged();
    Q_EMIT positionChanged();
}

qlonglong HVVideoComponent::position() const
{
    return static_cast<qlonglong>(m_controller->position());
}

void HVVideoComponent::setPosition(qlonglong position)
{
    m_controller->setPosition(static_cast<quint64>(position));
}

double HVVideoComponent::progress() const
{
    return m_controller->progress();
}

void HVVideoComponent::setProgress(double progress)
{
    m_controller->setProgress(progress);
}

QString HVVideoComponent::searchPath() const
{
    return m_searchPath;
}

void HVVideoComponent::setSearchPath(const QString &path)
{
    m_searchPath = path;
    Q_EMIT searchPathChanged();
}

bool HVVideoComponent::scrubbing() const
{
    return m_controller->isScrubbing();
}

void HVVideoComponent::setScrubbing(bool scrubbing)
{
    m_controller->setScrubbing(scrubbing);
}

double HVVideoComponent::contentHeight() const
{
    return m_controller->frameHeight();
}

double HVVideoComponent::contentWidth() const
{
    return m_controller->frameWidth();
}

double HVVideoComponent::loadProgress() const
{
    return m_controller->loadProgress();
}

bool HVVideoComponent::isDecoded() const
{
    return !m_whole.isEmpty() && m_whole == m_source->source();
}

void HVVideoComponent::frameReady()
{
    const HVVideoFrame frame = m_controller->currentFrame();
    if (frame.isNull())
        return;
    setFrame(frame);
    if (frame.height() != m_knownHeight) {
        Q_EMIT heightChanged();
        m_knownHeight = frame.height();
    }
    const double progress = m_controller->progress();
    if (progress != m_knownProgress) {
        m_knownProgress = progress;
        Q_EMIT progressChanged();
        Q_EMIT positionChanged();
    }
}

void HVVideoComponent::sourceChangedState()
{
    Q_EMIT stateChanged();
}

void HVVideoComponent::controllerPositionChanged()
{
    m_knownProgress = m_controller->progress();
    Q_EMIT positionChanged();
    Q_EMIT progressChanged();
}

void HVVideoComponent::setFrame(const HVVideoFrame &frame)
{
    if (frame.cacheKey() == m_frame.cacheKey())
        return; // a frame may be delivered more than once
    m_frame = frame;
    m_frameIsNew = true;
    update();
    frameChanged();
}

QSGNode *HVVideoComponent::updatePaintNode(QSGNode *node, UpdatePaintNodeData *data)
{
    Q_UNUSED(data)
    if (node && !m_frameIsNew)
        return node;
    m_frameIsNew = false;
    node = updateImageNode(node, window(), pixelsToUpload(m_frame, *window()), QPointF());
    if (node)
        static_cast<QSGImageNode *>(node)->setRect(QRectF(QPointF(), QSizeF(m_frame.size())));
    return node;
}

void HVVideoComponent::itemChange(ItemChange change, const ItemChangeData &value)
{
    QQuickItem::itemChange(change, value);
    if (change != ItemDevicePixelRatioHasChanged)
        return;
    m_frameIsNew = true;
    update();
}

} // namespace Hovlets
