// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QList>
#include <QtCore/QPointer>
#include <QtCore/QString>

#include <functional>

namespace Hovlets {

class HVWidget;
class HVXmlElement;

/*!
 * \brief The popups that the user has pinned, in the order of pinning.
 *
 * They are windows of their own that the user may close at any time: nothing here owns them, and
 * those that are gone are passed over.
 */
class HVPinnedPopups
{
public:
    void add(HVWidget *popup);

    /// Raises each, the last one first.
    void raise();

    /// Keeps each above other windows, or no longer.
    void setStayOnTop(bool on);

    /// What the first popup with the content for \a key shows, or null.
    HVXmlElement *contentFor(const QString &key) const;

private:
    void forEachFromLast(const std::function<void(HVWidget &)> &change);
    void forgetClosed();

    QList<QPointer<HVWidget>> m_popups;
};

} // namespace Hovlets
