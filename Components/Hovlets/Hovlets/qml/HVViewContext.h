// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

namespace Hovlets {

class HVEntryReader;
class HVToolTipTheme;
class HVView;
class HVViewWindow;
class HVViewMessages;

/*!
 * \brief What the user interface of a view finds by name: "hovlet", "hovletView", "dataLocation",
 * "hovletReader", "hovletTheme" and "hovletWindow".
 *
 * GUI thread only.
 */
class HVViewContext
{
public:
    /// \a view owns the context and the objects in it. Warnings go to \a messages.
    HVViewContext(HVView &view, const HVViewMessages &messages);

    /// Passes the content of the view to QML. \a rootPath is its package folder.
    void setContent(const QString &rootPath);

    /// Re-reads the desktop's tooltip colours and the application's font. \a isExact is the setting
    /// HVKeyExactToolTipColors.
    void refreshTheme(bool isExact);

    [[nodiscard]] HVViewWindow &window() const { return *m_window; }
    [[nodiscard]] HVEntryReader &reader() const { return *m_reader; }

    /// See HVToolTipTheme::setSurface().
    void setSurface(bool isRounded, bool isFramed);
    [[nodiscard]] bool isRounded() const;

private:
    HVView &m_view;
    HVToolTipTheme *m_theme; // child of the view
    HVViewWindow *m_window; // child of the view
    HVEntryReader *m_reader; // child of the view
};

} // namespace Hovlets
