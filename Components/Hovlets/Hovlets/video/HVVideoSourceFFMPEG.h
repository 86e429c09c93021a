// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVVideoSource.h"

#include <memory>

namespace Hovlets {

class HVClipOpening;

/*!
 * \brief Decodes a local clip file with FFmpeg, as fast as it can, into the source's cache.
 *
 * The controller does the pacing. If a clip cannot be opened, the source writes one line to Qt's
 * debug output and stays idle. Frames have the clip's size and 32 bits per pixel. The owner starts
 * the thread. Any thread may call the getters.
 */
class HVVideoSourceFFMPEG : public HVVideoSource
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVVideoSourceFFMPEG)

public:
    /// The first instance silences FFmpeg's log for the whole process.
    explicit HVVideoSourceFFMPEG(QObject *parent = nullptr);
    ~HVVideoSourceFFMPEG() override;

    void close() override;
    bool isOpen() override;
    double getTime() override;
    void changeSetPosition(quint64 frame) override;
    double duration() override;
    double timeBase() override;
    double frameRate() override;

    /// Size of the last opened clip; 200 x 150 before the first.
    double frameWidth() const override;
    double frameHeight() const override;

    /// Always 0: the controller knows the position.
    virtual quint64 position();

    /// Progress of decoding, by the clock: 0 to 1 for the first clip. The clock continues for the
    /// next clip, so its progress starts there. 0 if the clip has no known duration.
    virtual double progress();

    void restoreFrames() override;

    /// Whether the clip that setSource() has requested is open; for waiting.
    HVClipOpening &opening();

protected:
    void run() override;
    bool loadSource() override;

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace Hovlets
