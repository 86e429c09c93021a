// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

namespace HovletsTool {

/// Shows on a terminal how far some longer work is; elsewhere it is silent.
class Progress
{
public:
    /// \param isWanted without it, nothing is shown on a terminal either
    Progress(const QString &work, int steps, bool isWanted = true);
    ~Progress();
    Progress(const Progress &) = delete;
    Progress &operator=(const Progress &) = delete;

    void step();

private:
    QString m_work;
    int m_steps;
    int m_done = 0;
    bool m_isShown;
};

} // namespace HovletsTool
