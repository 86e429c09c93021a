// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVControlPart.h"

#include <QtCore/QPoint>
#include <QtCore/QString>

#include <optional>

class QWidget;

namespace Hovlets {

class HVPopupServices;

/*!
 * \brief The part of a control that a popup describes: all of it, or those of its tabs, sections,
 * items and entries for which the host returns the popup's key.
 *
 * Points are global, in pixels. GUI thread only.
 */
class HVDescribedPart
{
    Q_DISABLE_COPY_MOVE(HVDescribedPart)

public:
    /// \a popup owns the object.
    explicit HVDescribedPart(const QWidget &popup);

    /// Limits the description to what has \a key. The host returned it for \a control with the
    /// pointer at \a position.
    void set(const QString &key, const QWidget &control, const QPoint &position);

    /// The popup describes all of its control.
    void reset();

    /*!
     * Whether the part of \a control at \a position belongs to it.
     *
     * Asks the host for the key, once for each part that the pointer enters. The host's code may
     * delete the popup; the result is then false. Without \a services, the whole control belongs to
     * it.
     */
    [[nodiscard]] bool contains(QWidget &control, const QPoint &position,
                                HVPopupServices *services);

private:
    struct Described
    {
        QString key;
        HVControlPart::Id part;
        std::optional<HVControlPart::Id> askedPart; // for which the host was asked last
        bool isSame = false; // the host returned the key above
    };

    const QWidget &m_popup;
    std::optional<Described> m_described;
};

} // namespace Hovlets
