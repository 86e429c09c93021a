// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVVideoSource.h"

#include <atomic>

/// A source without a thread. The test supplies the frames; frame i is i + 1 pixels wide.
class FakeVideoSource : public Hovlets::HVVideoSource
{
public:
    void close() override { ++closed; }
    bool isOpen() override { return true; }
    double getTime() override { return 0; }
    void changeSetPosition(quint64 frame) override { Q_UNUSED(frame) }
    double duration() override { return 0; }
    double timeBase() override { return 0; }
    double frameRate() override { return rate; }
    double frameWidth() const override { return 64; }
    double frameHeight() const override { return 48; }

    using Hovlets::HVVideoSource::isRestoring;
    using Hovlets::HVVideoSource::restoringEnded;

    void load() { Hovlets::HVVideoSource::loadSource(); }

    /// Starts a clip without frames.
    void begin()
    {
        setupSource();
        clearChanges();
    }

    void push(int count = 1)
    {
        for (int i = 0; i < count; ++i) {
            const int width = static_cast<int>(loadedFrameCount()) + 1;
            pushFrame(Hovlets::HVVideoFrame(width, 1, QImage::Format_RGB32, 0));
        }
    }

    std::atomic<double> rate { 200.0 };
    std::atomic<int> closed { 0 };
};
