// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>
#include <QtCore/QPointer>

#include <memory>
#include <vector>

namespace Hovlets {

class HVVideoController;
class HVVideoSource;

/*!
 * \brief Keeps the threads of a clip that is no longer shown until they have ended, then frees them
 * and everything that they use.
 *
 * FFmpeg may be in the middle of a long step when the item of a clip is destroyed. The item is on
 * the GUI thread and therefore cannot wait.
 *
 * When the application object is destroyed, the keeper waits 3 s for running threads. After that,
 * it leaves them with their memory until the process ends. GUI thread only.
 */
class HVThreadKeeper : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVThreadKeeper)

public:
    ~HVThreadKeeper() override;

    /// Takes ownership of both objects, and asks their threads to quit.
    static void keep(HVVideoController *controller, HVVideoSource *source);

    /// The number of clips being kept.
    [[nodiscard]] static int count();

private:
    /// A clip's objects. The source outlives its controller.
    struct Clip
    {
        std::unique_ptr<HVVideoSource> source;
        QPointer<HVVideoController> controller; // deletes itself at its end
    };

    HVThreadKeeper();
    static void endWithApplication();
    void take(Clip clip);
    void freeEnded(int milliseconds);
    void freeEndedAndRetry();

    std::vector<Clip> m_clips;
};

} // namespace Hovlets
