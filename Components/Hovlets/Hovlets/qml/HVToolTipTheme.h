// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>
#include <QtGui/QColor>
#include <QtGui/QFont>

namespace Hovlets {

/*!
 * \brief The desktop's tooltip colours and the application's font, for QML as "hovletTheme".
 *
 * Qt Quick offers only the application's palette, which lacks the tooltip colours. Rules for
 * QToolTip in the application's style sheet override both. The values are read at creation and by
 * refresh(), which runs at every show and whenever the application's palette or font changes. GUI
 * thread only; owned by the view.
 */
class HVToolTipTheme : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVToolTipTheme)
    Q_PROPERTY(QColor base READ base NOTIFY changed)
    Q_PROPERTY(QColor text READ text NOTIFY changed)
    Q_PROPERTY(QColor link READ link NOTIFY changed)
    Q_PROPERTY(QFont font READ font NOTIFY changed)
    Q_PROPERTY(QFont fixedFont READ fixedFont NOTIFY changed)
    Q_PROPERTY(QColor windowBase READ windowBase NOTIFY changed)
    Q_PROPERTY(QColor windowText READ windowText NOTIFY changed)
    Q_PROPERTY(QColor accent READ accent NOTIFY changed)
    Q_PROPERTY(bool exact READ isExact NOTIFY changed)
    Q_PROPERTY(bool rounded READ isRounded NOTIFY surfaceChanged)
    Q_PROPERTY(bool framed READ isFramed NOTIFY surfaceChanged)

public:
    explicit HVToolTipTheme(QObject *parent);

    /// Background of tooltips.
    [[nodiscard]] QColor base() const { return m_values.base; }

    /// Text colour on that background.
    [[nodiscard]] QColor text() const { return m_values.text; }

    /// The palette's link colour, which may be unreadable on the background.
    [[nodiscard]] QColor link() const { return m_values.link; }

    /// The application's font, or that of tooltips if the style sheet sets it.
    [[nodiscard]] QFont font() const { return m_values.font; }

    /// The desktop's font for code, whose letters have one width.
    [[nodiscard]] QFont fixedFont() const { return m_values.fixedFont; }

    /// Background of the application's lists and text fields.
    [[nodiscard]] QColor windowBase() const { return m_values.windowBase; }

    /// Text colour on that background.
    [[nodiscard]] QColor windowText() const { return m_values.windowText; }

    /// The application's highlight colour.
    [[nodiscard]] QColor accent() const { return m_values.accent; }

    /// Whether a user interface should use base() and text() even where they are old-fashioned: the
    /// host asks for it, or its style sheet sets them.
    [[nodiscard]] bool isExact() const { return m_values.isExact; }

    /// Whether the corners of the popup may be transparent.
    [[nodiscard]] bool isRounded() const { return m_isRounded; }

    /// Whether the library draws the outline of a popup with transparent corners.
    [[nodiscard]] bool isFramed() const { return m_isFramed; }

    /// Sets both, and emits surfaceChanged() if either differs.
    void setSurface(bool isRounded, bool isFramed);

    /// Re-reads the desktop's values and emits changed() if any differs. \a isExact is the host's
    /// wish.
    void refresh(bool isExact = false);

Q_SIGNALS:
    void changed();
    void surfaceChanged();

private:
    struct Values
    {
        QColor base;
        QColor text;
        QColor link;
        QFont font;
        QFont fixedFont;
        QColor windowBase;
        QColor windowText;
        QColor accent;
        bool isExact = false;
    };

    Values m_values;
    bool m_isRounded = false;
    bool m_isFramed = false;
};

} // namespace Hovlets
