// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

namespace HovletsTool {

/// Shows the progress of a longer task on a terminal. Shows nothing when standard error is not a
/// terminal.
class Progress
{
public:
    /// \param isWanted false for no output at all
    Progress(const QString &work, int steps, bool isWanted = true);
    ~Progress();
    Q_DISABLE_COPY_MOVE(Progress)

    void step();

private:
    QString m_work;
    int m_steps;
    int m_done = 0;
    bool m_isShown;
};

} // namespace HovletsTool
