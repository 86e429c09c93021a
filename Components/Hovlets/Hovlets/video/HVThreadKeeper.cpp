// SPDX-License-Identifier: Apache-2.0
#include "HVThreadKeeper.h"

#include "HVVideoController.h"
#include "HVVideoSource.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDeadlineTimer>
#include <QtCore/QTimer>

#include <algorithm>

namespace Hovlets {

namespace {

constexpr int ExitTime = 3000; // ms
constexpr int RetryTime = 50; // ms

HVThreadKeeper *instance = nullptr; // GUI thread only

/// A thread that has announced its end needs a moment longer to end.
bool hasEnded(QThread &thread, int milliseconds)
{
    return thread.wait(QDeadlineTimer(milliseconds));
}

} // namespace

HVThreadKeeper::HVThreadKeeper()
{
    instance = this;
    qAddPostRoutine(&HVThreadKeeper::endWithApplication);
}

HVThreadKeeper::~HVThreadKeeper()
{
    instance = nullptr;
}

void HVThreadKeeper::keep(HVVideoController *controller, HVVideoSource *source)
{
    Clip clip { std::unique_ptr<HVVideoSource>(source), controller };
    source->setParent(nullptr);
    source->setShouldQuit();
    if (controller) {
        controller->setParent(nullptr);
        disconnect(controller, &QThread::finished, controller, &QObject::deleteLater);
        controller->setShouldQuit();
    }
    if (!instance)
        new HVThreadKeeper; // until the application ends
    instance->take(std::move(clip));
    if (!QCoreApplication::instance())
        endWithApplication(); // no events are handled after this
}

int HVThreadKeeper::count()
{
    return instance ? static_cast<int>(instance->m_clips.size()) : 0;
}

void HVThreadKeeper::take(Clip clip)
{
    const auto freeEndedLater = [this] { freeEndedAndRetry(); };
    connect(clip.source.get(), &QThread::finished, this, freeEndedLater, Qt::QueuedConnection);
    if (clip.controller) {
        connect(clip.controller, &QThread::finished, this, freeEndedLater, Qt::QueuedConnection);
    }
    m_clips.push_back(std::move(clip));
    // They may have ended before the signals were connected.
    QMetaObject::invokeMethod(this, freeEndedLater, Qt::QueuedConnection);
}

/// Waits for \a milliseconds in total.
void HVThreadKeeper::freeEnded(int milliseconds)
{
    const QDeadlineTimer deadline(milliseconds);
    const auto isOver = [&deadline](Clip &clip) {
        const auto left = [&deadline] { return static_cast<int>(deadline.remainingTime()); };
        if (!hasEnded(*clip.source, left()))
            return false;
        if (clip.controller && !hasEnded(*clip.controller, left()))
            return false;
        delete clip.controller;
        return true;
    };
    m_clips.erase(std::remove_if(m_clips.begin(), m_clips.end(), isOver), m_clips.end());
}

void HVThreadKeeper::freeEndedAndRetry()
{
    freeEnded(0);
    const bool isEnding = std::any_of(m_clips.begin(), m_clips.end(), [](const Clip &clip) {
        return clip.source->isFinished() || (clip.controller && clip.controller->isFinished());
    });
    if (isEnding)
        QTimer::singleShot(RetryTime, this, &HVThreadKeeper::freeEndedAndRetry);
}

void HVThreadKeeper::endWithApplication()
{
    const std::unique_ptr<HVThreadKeeper> ending(instance);
    if (!ending)
        return;
    ending->freeEnded(ExitTime);
    for (Clip &clip : ending->m_clips)
        static_cast<void>(
                clip.source.release()); // and the controller: a running thread must not lose them
}

} // namespace Hovlets
