// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <HovletsAssist/HVAssistExport.h>

#include <QtCore/QObject>
#include <QtGui/QKeySequence>

#include <memory>

namespace Hovlets {

class HVInterface;

/// Options for the construction of an HVKeyboardAccess.
struct HVKeyboardAccessSettings
{
    /*!
     * Key with modifiers that opens and closes the hovlet of the control with the focus. If empty,
     * no key does.
     *
     * Other toolkits use Ctrl+F1 for tooltips. F1 and Shift+F1 are not available: they are Qt's
     * standard keys for help and "What's This?".
     */
    QKeySequence openKey { QStringLiteral("Ctrl+F1") };

    /// Escape hides the popup, and closes a pinned one that has the focus.
    bool escapeHides = true;

    /// Announces each popup to screen readers, even those that the mouse opens.
    bool announce = true;
};

/*!
 * \brief Hovlets without a mouse: keys to open and hide them, and announcements for screen readers.
 *
 * The key opens the hovlet of the control with the focus, or of its nearest parent that has one,
 * beside the control; in an open menu, that of the current action. It works in every window,
 * including dialogs. The same key, Escape, or a change of the focus hides it again. A resting mouse
 * does not; once it moves, the library's rules for the mouse apply. HVKeySuspended and
 * HVKeyRequiredModifiers apply as well: with the latter, choose a key that has those modifiers.
 *
 * The host does not receive Escape while a popup is visible; the next one closes the dialog.
 *
 * Create one object after the host's interface and delete it before. Once the interface is gone, it
 * does nothing. It watches the application's events and does not own the popup. GUI thread only.
 */
class HOVLETS_ASSIST_EXPORT HVKeyboardAccess : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVKeyboardAccess)

public:
    /// Starts to watch the application. The interface is not owned; the settings are copied.
    explicit HVKeyboardAccess(HVInterface &host, const HVKeyboardAccessSettings &settings = {},
                              QObject *parent = nullptr);
    ~HVKeyboardAccess() override;

    /// Enables or disables keys and announcements. Initially, they are enabled.
    void setEnabled(bool enabled);

    /// Whether keys and announcements are enabled.
    [[nodiscard]] bool isEnabled() const;

    /// Opens a hovlet in the same way as the key. Returns false if there is none to show, or while
    /// disabled.
    bool open();

    /// Hides the popup that open() opened, if it still shows that hovlet.
    void close();

    /// Whether a popup that open() opened is on screen.
    [[nodiscard]] bool isOpen() const;

protected:
    /// Watches all events of the application and consumes the keys that it handles.
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace Hovlets
