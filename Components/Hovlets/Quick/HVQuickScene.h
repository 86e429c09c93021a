// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Hovlets/HVScene.h>

class QQuickItem;
class QQuickWindow;

namespace Hovlets {

/*!
 * \brief The items of a window with an attached "Hovlet", as controls. GUI thread only.
 */
class HVQuickScene : public HVScene
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVQuickScene)

public:
    /// The scene in \a window, which is created if there is none. Null for null.
    static HVQuickScene *in(QQuickWindow *window);

protected:
    [[nodiscard]] QList<QObject *> controlsAt(const QPoint &position) const override;
    [[nodiscard]] QRect geometryOf(const QObject *control) const override;
    [[nodiscard]] QString keyOf(const QObject *control) const override;
    [[nodiscard]] QString shortcutOf(const QObject *control) const override;
    [[nodiscard]] QList<QObject *> focusedControls() const override;

private:
    explicit HVQuickScene(QQuickWindow *window);

    QQuickWindow &m_window;
};

} // namespace Hovlets
