// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <HovletsAssist/HVAssistExport.h>

#include <QtCore/QObject>
#include <QtGui/QKeySequence>

#include <memory>

namespace Hovlets {

class HVInterface;

/// What an HVKeyboardAccess does, at its construction.
struct HVKeyboardAccessSettings
{
    /*!
     * Opens and closes the hovlet of the control with the focus; one key with its modifiers. Empty:
     * no key does.
     *
     * Ctrl+F1 is what other toolkits show a tooltip with. F1 and Shift+F1 are taken: Qt's standard
     * keys give them to the help and to "What's This?".
     */
    QKeySequence openKey { QStringLiteral("Ctrl+F1") };

    /// Whether Escape hides the popup, and closes a pinned one that has the focus.
    bool escapeHides = true;

    /// Whether screen readers are told of each popup.
    bool announce = true;
};

/*!
 * \brief Hovlets without a mouse: keys that open and hide them, and words for screen readers.
 *
 * The key opens the hovlet of the control with the focus, or of its nearest parent that has one,
 * beside the control; in an open menu that of the chosen entry. It works in every window, dialogs
 * included. The same key, Escape, or the focus moving on hides it again. The mouse does so only
 * when it moves: from then on the library's rules for the mouse hold. What HVKeySuspended or
 * HVKeyRequiredModifiers refuse is refused here too; with the latter, choose a key that has those
 * modifiers.
 *
 * Escape is taken from the host only while a popup is visible: the next one closes the dialog.
 *
 * Make one after the host's interface and delete it before; without the interface it does nothing.
 * It watches the application's events. The popup stays the library's. GUI thread only.
 */
class HOVLETS_ASSIST_EXPORT HVKeyboardAccess : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVKeyboardAccess)

public:
    /*!
     * Begins to watch.
     * \param host the host's interface; not owned
     * \param settings the keys and what they do; they are copied
     * \param parent owner of the object, as of any QObject; null for none
     */
    explicit HVKeyboardAccess(HVInterface &host, const HVKeyboardAccessSettings &settings = {},
                              QObject *parent = nullptr);
    ~HVKeyboardAccess() override;

    /*!
     * Off, it leaves every key alone and announces nothing. On to begin with.
     * \param enabled whether it is on
     */
    void setEnabled(bool enabled);

    /*!
     * Whether it is on.
     * \return as the last setEnabled() has it
     */
    bool isEnabled() const;

    /*!
     * What the key does when no hovlet is open.
     * \return false when there is none to show
     */
    bool open();

    /// Hides the popup that open() opened, if it still shows that.
    void close();

    /*!
     * Whether a popup that open() opened is on screen.
     * \return true while it is
     */
    bool isOpen() const;

protected:
    /*!
     * Watches the application.
     * \param object whose event it is
     * \param event any event of the application
     * \return true for a key that was taken
     */
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace Hovlets
