// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>
#include <QtGui/QColor>
#include <QtGui/QFont>

namespace Hovlets {

/*!
 * \brief The desktop's tooltip colours and the application's font, for QML as "hovletTheme".
 *
 * Qt Quick offers only the application's palette, which lacks the tooltip colours. The values are
 * read at creation and by refresh(), which runs at every show and whenever the application's
 * palette or font changes. GUI thread only; owned by the view.
 */
class HVToolTipTheme : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVToolTipTheme)
    Q_PROPERTY(QColor base READ base NOTIFY changed)
    Q_PROPERTY(QColor text READ text NOTIFY changed)
    Q_PROPERTY(QColor link READ link NOTIFY changed)
    Q_PROPERTY(QFont font READ font NOTIFY changed)

public:
    explicit HVToolTipTheme(QObject *parent);

    /// Background of tooltips.
    [[nodiscard]] QColor base() const { return m_base; }

    /// Text colour on that background.
    [[nodiscard]] QColor text() const { return m_text; }

    /// The palette's link colour, which may be unreadable on the background.
    [[nodiscard]] QColor link() const { return m_link; }

    /// The application's font.
    [[nodiscard]] QFont font() const { return m_font; }

    /// Re-reads the desktop's values and emits changed() if any differs.
    void refresh();

Q_SIGNALS:
    void changed();

private:
    QColor m_base;
    QColor m_text;
    QColor m_link;
    QFont m_font;
};

} // namespace Hovlets
