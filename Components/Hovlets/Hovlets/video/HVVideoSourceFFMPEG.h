// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVVideoSource.h"

#include <memory>

namespace Hovlets {

/*!
 * \brief Decodes a local clip file with FFmpeg, as fast as it can, into the source's cache.
 *
 * Pacing is the controller's business. Failures to open go to Qt's debug output, one line each,
 * and leave the source idle. A picture is 32 bits a pixel, at the clip's size. The owner starts the
 * thread. Getters may be called from any thread.
 */
class HVVideoSourceFFMPEG : public HVVideoSource
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVVideoSourceFFMPEG)

public:
    /// The first one silences FFmpeg's log, for the whole process.
    explicit HVVideoSourceFFMPEG(QObject *parent = nullptr);
    ~HVVideoSourceFFMPEG() override;

    void close() override;
    bool isOpen() override;
    double getTime() override;
    void changeSetPosition(quint64 frame) override;
    double duration() override;
    double timeBase() override;
    double frameRate() override;

    /// Of the clip last opened; 200 x 150 before the first.
    double frameWidth() const override;
    double frameHeight() const override;

    /// Always 0: the controller knows the position.
    virtual quint64 position();

    /// How far the decoding is, by the clock: from 0 to 1 for the first clip, and on from there for
    /// the next, as the clock goes on. 0 when the clip does not tell its duration.
    virtual double progress();

    void restoreFrames() override;

protected:
    void run() override;
    bool loadSource() override;

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace Hovlets
