// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVBesideControl.h"
#include "HVContext.h"
#include "HVDescribedPart.h"

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtCore/QVariant>

#include <optional>

namespace Hovlets {

class HVControlWatch;
class HVDisabledReason;
class HVDismissalWatch;
class HVExpansion;
class HVPathWatch;

/*!
 * \brief The control that a hover popup describes, and what is watched while the popup is up.
 *
 * Reads the settings whenever it uses them. Points are global, in pixels. GUI thread only.
 */
class HVHoveredControl : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVHoveredControl)

public:
    /// For \a popup, which owns the object and describes no control yet. It belongs to
    /// \a reference, which may be null.
    HVHoveredControl(QWidget &popup, HVPopupServices *services, QWidget *reference);

    /// The control, or the widget that the popup belongs to. Null if it was deleted.
    [[nodiscard]] QWidget *widget() const;

    /// Sets the mouse position for the next set(), which otherwise uses the cursor's.
    void setPointer(const QPoint &position);

    /// The popup describes \a control, which may be null.
    void set(QWidget *control);

    /// Why the control is disabled, if the host says so; see HVDisabledReason.
    [[nodiscard]] QString disabledReason() const;

    /// The place beside the control, if the settings ask for it and there is a control.
    [[nodiscard]] std::optional<HVBesideControl> beside() const;

    /// The popup describes no control any more, but belongs to \a reference, which may be null.
    void release(QWidget *reference);

    /// The content is that for \a key, which the host returned with the pointer at \a position.
    void setKey(const QString &key, const QPoint &position);

    /// Call when the popup is up, and has its place.
    void startWatching();

    /// Call when the popup is the full one.
    void stopExpansion();

    /// Call when the popup is hidden.
    void stopWatching();

    /// Call when the popup begins to hide by itself.
    void finish();

    /// Whether \a position is over the described part of the control, or on the way from there to
    /// the popup. May run code of the host, which may delete the popup; the result is then false.
    [[nodiscard]] bool isNear(const QPoint &position);

    /// Call when the mouse comes near the popup or its control, and when it leaves them.
    void setMouseIsNear(bool isNear);

Q_SIGNALS:
    /// The control is not where it was, or the user dismisses the popup.
    void ended();

    /// The popup covers a window that became active.
    void inTheWay();

    /// The pointer moved where no mouse event reports it.
    void pointerIsAt(const QPoint &position);

    /// The simple popup becomes the full one.
    void expansionDue();

    /// disabledReason() may have changed.
    void disabledReasonChanged();

private:
    QVariant setting(contextKey key) const;

    QWidget &m_popup;
    QPointer<HVPopupServices> m_services; // null after the manager is destroyed
    QPointer<QWidget> m_widget;
    std::optional<QPoint> m_nextPointer;
    QPoint m_pointer; // where the mouse was when the control was set
    HVDescribedPart m_described;

    // Children of the popup
    HVControlWatch *m_control;
    HVDisabledReason *m_reason;
    HVDismissalWatch *m_dismissal; // runs while the popup is up
    HVPathWatch *m_path; // runs while the popup is up
    HVExpansion *m_expansion; // runs while a simple popup is up
};

} // namespace Hovlets
