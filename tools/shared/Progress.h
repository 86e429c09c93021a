// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

namespace HovletsTool {

/// Shows the progress of longer tasks on a terminal. Shows nothing when standard error is not a
/// terminal.
class Progress
{
public:
    /// \param isWanted false for no output at all
    explicit Progress(bool isWanted = true);
    ~Progress();
    Q_DISABLE_COPY_MOVE(Progress)

    /// Begins a task, such as "rendering".
    void begin(const QString &task, int steps);

    void step();

private:
    QString m_task;
    int m_steps = 0;
    int m_done = 0;
    bool m_isShown;
};

} // namespace HovletsTool
