// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>

namespace Hovlets {

/*!
 * \brief Makes all windows of the application show tooltips while they are inactive.
 *
 * Those that exist do so at once, others when they are shown for the first time. GUI thread only.
 */
class HVAlwaysToolTips : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVAlwaysToolTips)

public:
    HVAlwaysToolTips();

    /// Makes all windows show tooltips only while they are active.
    static void reset();

protected:
    bool eventFilter(QObject *object, QEvent *event) override;
};

} // namespace Hovlets
