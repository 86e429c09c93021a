// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtCore/QVector>

class QPoint;
class QWidget;

namespace Hovlets {

/*!
 * \brief Why a control is disabled, as given in the host's dynamic property "hovletDisabledReason".
 *
 * The property may be set on the control, on its action, or on a widget around it. It counts while
 * that object is disabled. Needs no manager. GUI thread only.
 */
class HVDisabledReason : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVDisabledReason)

public:
    explicit HVDisabledReason(QObject *parent);

    /// Watches \a control, which may be null, or its part at the global \a position.
    void watch(QWidget *control, const QPoint &position);

    /// The reason, in plain text. Empty for a control that is enabled or has none.
    [[nodiscard]] QString text() const;

Q_SIGNALS:
    /// Emitted when the text may have changed.
    void changed();

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    void add(QObject *object);
    void release();

    QVector<QPointer<QObject>> m_objects; // from the innermost to the window
};

} // namespace Hovlets
