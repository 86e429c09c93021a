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
 * \brief Keeps the threads of a clip that nobody shows any more until they have ended, and frees
 * them then with all that they use.
 *
 * FFmpeg may be in the middle of a long step when the item of a clip is destroyed. The item cannot
 * wait for it: it is on the GUI thread.
 *
 * When the application object is destroyed, the keeper waits 3 s for what still runs. What runs
 * even then is left alone, with its memory, until the process ends. GUI thread only.
 */
class HVThreadKeeper : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVThreadKeeper)

public:
    ~HVThreadKeeper() override;

    /// Asks both threads to quit, and owns both objects from now on.
    static void keep(HVVideoController *controller, HVVideoSource *source);

    /// The number of clips that are kept.
    [[nodiscard]] static int count();

private:
    /// A source outlives its controller.
    struct Clip
    {
        std::unique_ptr<HVVideoSource> source;
        QPointer<HVVideoController> controller; // deletes itself at its end
    };

    HVThreadKeeper();
    static void endWithApplication();
    void take(Clip clip);
    void freeEnded(int milliseconds);

    std::vector<Clip> m_clips;
};

} // namespace Hovlets
