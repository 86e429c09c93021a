// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVExport.h"

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QVariant>

#include <memory>

/// The integer in which a context key travels; see Hovlets::contextKey for the keys in use.
typedef int HVContextKey;

namespace Hovlets {

/*!
 * \brief The settings that the library reads, with the type each is read as and its default.
 *
 * A value is converted where it is used, by Qt's own rules: what does not convert reads as false,
 * 0, an empty string or an invalid size. Numbers that are missing here are never read by the
 * library, so a host may use them for itself.
 */
enum contextKey {
    /// float, ms, 3000: a popup that the mouse has left hides after this; 0 or less: never.
    HVKeyHideDelay = 2,
    /// bool, false: the popup is an ordinary window instead of a tooltip window.
    HVKeyPopupIsWindow = 3,
    /// string, "hovlets": package folders are named with the package name, a dot and this.
    HVKeyPackageSuffix = 10,
    /// string, empty: one more folder in which every package looks for its components.
    HVKeyExtraComponentPath = 11,
    /// string, "ui/HovletsUI.qml": the QML file of the full popup.
    HVKeyRichUiFile = 12,
    /// string, "ui/SimpleTooltip.qml": the QML file of the simple popup.
    HVKeySimpleUiFile = 13,
    /// string, "Resources": folder of a package's images and clips.
    HVKeyResourceFolder = 16,
    /// bool, false: the library watches the application's mouse events by itself. Read once.
    HVKeyTrackHover = 17,
    /// QSize, 20 x 20, px: margin around the popup in which the mouse counts as over it.
    HVKeySafeMargin = 18,
    /// QSize, 35 x 30, px: from the cursor to the popup's top-left corner.
    HVKeyCursorOffset = 19,
    /// bool, false: show the simple popup (HVKeySimpleUiFile) instead of the full one.
    HVKeySimpleMode = 20,
    /// bool: documentation topics can be opened; unset, QML sees false and topics open.
    HVKeyDocumentationEnabled = 21,
    /// bool, true: web addresses and files can be opened.
    HVKeyLinksEnabled = 22,
    /// string, empty: key of the content to show for a control that has none.
    HVKeyFallbackKey = 23,
    /// string, "en_US": locale of the content to show when the preferred locale has none.
    HVKeyFallbackLocale = 24,
    /// string, "en_US": the preferred locale.
    HVKeyLocale = 25,
    /// bool, false: no popup is shown.
    HVKeySuspended = 26,
    /// bool, true: an index clears itself when it is set up.
    HVKeyClearIndexOnSetup = 27,
    /// bool, false: tooltips show in inactive windows too. Read once.
    HVKeyAlwaysShowTooltips = 29,
    /// string, empty: path of a file with further attributes by key.
    HVKeyKeyDataFile = 30,
    /// int, Qt::KeyboardModifiers, 0: popups show only while exactly these are held.
    HVKeyRequiredModifiers = 31,
    /// string, "Control": folder of a package that holds its control files.
    HVKeyControlFolderName = 32,
    /// string, "l10n": folder that holds the translation files.
    HVKeyTranslationFolder = 33,
    /// int, ms, 0: fade-in time; 0 shows at once.
    HVKeyShowFadeDuration = 34,
    /// int, ms, 300: fade-out time; 0 hides at once.
    HVKeyHideFadeDuration = 35,
    /// int, 200: highest HVMessageType that is passed on to the host.
    HVKeyMessageLevel = 36,
    /// string, "Hovlets": base name of the translation files.
    HVKeyTranslationName = 37
};

} // namespace Hovlets

/*!
 * \brief The settings that a host and the library share, by integer key.
 *
 * The host fills one context and hands it to its Hovlets::HVInterface, which copies it: later
 * changes go through HVInterface::context(). Nothing in the library caches a setting, so a change
 * takes effect at the next use (the two keys marked "Read once" excepted).
 *
 * GUI thread only; there is no lock. Signals are emitted from within set().
 */
class HOVLETS_EXPORT HVContext : public QObject
{
    Q_OBJECT

public:
    /*!
     * An empty context.
     * \param parent owner of the object, as of any QObject; null for none
     */
    explicit HVContext(QObject *parent = nullptr);

    /*!
     * A context of its own; no parent, no name, no connections.
     * \param other whose settings are taken over
     */
    HVContext(const HVContext &other);

    ~HVContext() override;

    /*!
     * Drops all settings and takes over others. Emits nothing.
     * \param other whose settings are taken over
     * \return this context
     */
    HVContext &operator=(const HVContext &other);

    /*!
     * Whether a setting was ever written, be it with an invalid value.
     * \param key number of the setting
     * \return true when it was
     */
    bool contains(const HVContextKey &key) const;

    /*!
     * The value of a setting.
     * \param key number of the setting
     * \param defaultValue what to answer when it was never set
     * \return the value as it was written, invalid ones included
     */
    QVariant get(const HVContextKey &key, const QVariant &defaultValue) const;

    /*!
     * The settings that were written.
     * \return their keys, in ascending order
     */
    QList<HVContextKey> keys() const;

    /*!
     * Writes a setting. Both signals are emitted on every call, also for an equal value.
     * \param key number of the setting
     * \param value what to store; it is converted where it is read
     */
    void set(const HVContextKey &key, const QVariant &value);

Q_SIGNALS:
    /*!
     * Before a write: get() still gives the old value.
     * \param key number of the setting
     */
    void settingWillChange(HVContextKey key);

    /*!
     * After a write: get() gives the new value.
     * \param key number of the setting
     */
    void settingDidChange(HVContextKey key);

private:
    class Private;
    std::unique_ptr<Private> d;
};
