// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVExport.h"

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QVariant>

#include <memory>

/// The type of a setting's key; Hovlets::contextKey lists the keys that the library reads.
typedef int HVContextKey;

namespace Hovlets {

/// The position of a popup: values of HVKeyPlacement.
enum HVPopupPlacement : int {
    /// At HVKeyCursorOffset from the cursor.
    HVPlaceAtCursor = 0,
    /// Below, above, right or left of the control, or of its part, such as a tab. Over it only if
    /// no side has room.
    HVPlaceBesideControl = 1
};

/// Input that hides a popup while the mouse is still near it: values of HVKeyDismissOnKey, which
/// can be combined.
enum HVDismissal : int {
    HVDismissNever = 0,
    /// The Escape key.
    HVDismissOnEscape = 1,
    /// Any key except modifiers. In a popup that has the keyboard focus, only Escape.
    HVDismissOnAnyKey = 2,
    /// The wheel over the control.
    HVDismissOnWheel = 4
};

/*!
 * \brief The settings that the library reads: type, unit, default, meaning.
 *
 * A value is converted where it is read, by QVariant's rules. What does not convert reads as false,
 * 0, an empty string or an invalid size, not as the default.
 *
 * The library never reads keys below 1000 that are missing here, so a host may use them. The range
 * from 1000 to 1999 is reserved for the library; keys from 2000 on belong to hosts. Hosts rely on
 * the name of this type, so it begins in lower case.
 */
enum contextKey {
    /// float, ms, 3000: a popup hides this long after the mouse has left it; 0 or less: never.
    HVKeyHideDelay = 2,
    /// bool, false: the popup is an ordinary window instead of a tooltip window.
    HVKeyPopupIsWindow = 3,
    /// string, "hovlets": package folders are named with the package name, a dot and this.
    HVKeyPackageSuffix = 10,
    /// string, path, empty: one more folder in which every package looks for its components.
    HVKeyExtraComponentPath = 11,
    /// string, "ui/HovletsUI.qml": the QML file of the full popup.
    HVKeyRichUiFile = 12,
    /// string, "ui/SimpleTooltip.qml": the QML file of the simple popup.
    HVKeySimpleUiFile = 13,
    /// string, "Resources": folder of a package's images and clips.
    HVKeyResourceFolder = 16,
    /// bool, false: the library itself watches the application's mouse events. Read once.
    HVKeyTrackHover = 17,
    /// QSize, px, 20 x 20: margin around the popup in which the mouse counts as over it.
    HVKeySafeMargin = 18,
    /// QSize, px, 35 x 30: distance from the cursor to the popup's top-left corner.
    HVKeyCursorOffset = 19,
    /// bool, false: show the simple popup (HVKeySimpleUiFile) instead of the full one.
    HVKeySimpleMode = 20,
    /// bool, not set: documentation topics can be opened. While it is not set, QML sees false, but
    /// topics open.
    HVKeyDocumentationEnabled = 21,
    /// bool, true: web addresses and files can be opened.
    HVKeyLinksEnabled = 22,
    /// string, empty: key of the entry to show, in the fallback locale, for a control without one.
    HVKeyFallbackKey = 23,
    /// string, locale, "en_US": locale of the entry to show if the preferred locale has none.
    HVKeyFallbackLocale = 24,
    /// string, locale, "en_US": the preferred locale.
    HVKeyLocale = 25,
    /// bool, false: no popup is shown.
    HVKeySuspended = 26,
    /// bool, true: an index clears itself when it is set up.
    HVKeyClearIndexOnSetup = 27,
    /// bool, false: tooltips show in inactive windows too. Read once.
    HVKeyAlwaysShowTooltips = 29,
    /// string, path, empty: a file with further attributes by key.
    HVKeyKeyDataFile = 30,
    /// int, Qt::KeyboardModifiers, 0: popups show only while exactly these are held; 0: always.
    HVKeyRequiredModifiers = 31,
    /// string, "Control": folder of a package that holds its control files.
    HVKeyControlFolderName = 32,
    /// string, "l10n": folder that holds the translation files.
    HVKeyTranslationFolder = 33,
    /// int, ms, 0: fade-in time; 0 shows at once.
    HVKeyShowFadeDuration = 34,
    /// int, ms, 300: fade-out time; 0 hides at once.
    HVKeyHideFadeDuration = 35,
    /// int, HVMessageType, 200: highest type that is passed on to the host.
    HVKeyMessageLevel = 36,
    /// string, "Hovlets": base name of the translation files.
    HVKeyTranslationName = 37,
    /// bool, false: control files can name only files in packages, with symbolic links resolved.
    HVKeyConfineContent = 1000,
    /// bool, false: between the preferred locale and the fallback locale, look for the preferred
    /// language: for fr_CA, also fr. Translations are then looked up in the fallback locale too.
    HVKeyLanguageFallback = 1010,
    /// int, HVPopupPlacement, 0: position of a popup that has a widget or an item as its control.
    HVKeyPlacement = 1100,
    /// QRegion, global px, not set: area that a popup beside its control leaves visible.
    HVKeyKeepClear = 1101,
    /// bool, false: controls between a control and its popup do not hide the popup.
    HVKeySafePath = 1110,
    /// int, ms, 180: with HVKeySafePath, how long the mouse rests until another control takes over.
    HVKeySafePathDwell = 1111,
    /// int, ms, 0: how long the mouse rests before the first popup. A popup never shows before Qt's
    /// tooltip would.
    HVKeyShowDelay = 1120,
    /// int, ms, 0: how long the mouse stays until the simple popup becomes the full one; 0: never.
    HVKeyExpandDelay = 1121,
    /// string, key, empty: a key with its modifiers, such as "F1" or "Ctrl+Space", in the form of
    /// QKeySequence::PortableText. It turns the simple popup into the full one, and pins the full
    /// one; otherwise it reaches the host. Empty: none.
    HVKeyExpandKey = 1122,
    /// int, HVDismissal, 0: input that hides a popup. It still reaches its receiver.
    HVKeyDismissOnKey = 1130,
    /// int, ms, 0: how long a hidden popup keeps the decoded frames of its clips; 0: until other
    /// clips need their memory. Freed frames are decoded again when they are needed.
    HVKeyClipReleaseDelay = 1140,
    /// bool, false: controls without an entry show their own tooltip, status tip and What's This in
    /// a popup.
    HVKeyShowOwnTips = 1150,
    /// bool, false: a pinned popup is an ordinary window with an entry in the taskbar, instead of a
    /// tool window that stays above the window of its control. A host's container is unaffected.
    HVKeyPinnedInTaskbar = 1180,
    /// string, key, empty: the entry with which the library prepares the first popup, while the
    /// application is idle after its start. Empty: nothing is prepared. Read once.
    HVKeyWarmUp = 1181,
    /// bool, false: the default user interface uses the tooltip colours of the palette even where
    /// they are the pale yellow that many desktops have by default.
    HVKeyExactToolTipColors = 1220,
    /// bool, false: popups may have rounded corners, and have a shadow and, beside their control,
    /// an arrow, where the window system blends windows.
    HVKeySurface = 1230,
    /// bool, false: a pinned popup has a title bar of its user interface instead of the desktop's,
    /// and can be resized.
    HVKeyOwnTitleBar = 1231
};

} // namespace Hovlets

/*!
 * \brief The settings that a host and the library share, by integer key.
 *
 * The host fills one context and passes it to its Hovlets::HVInterface, which copies it. Later
 * changes go through HVInterface::context(). The library reads a setting each time it uses it, so a
 * change takes effect at the next use; only the three keys marked "Read once" are exceptions.
 *
 * Do not use it as a general store: nothing can be removed, and nothing is saved. The class is
 * outside the namespace, and hosts rely on that.
 *
 * GUI thread only: nothing is locked. set() emits its signals synchronously.
 */
class HOVLETS_EXPORT HVContext : public QObject
{
    Q_OBJECT

public:
    /// A context without settings: get() returns defaults. A \a parent owns it, like any QObject.
    explicit HVContext(QObject *parent = nullptr);

    /// A context with the settings of \a other, but without its parent, name and connections.
    HVContext(const HVContext &other);

    ~HVContext() override;

    /// Replaces all settings by those of \a other. Emits no signal.
    HVContext &operator=(const HVContext &other);

    /// Whether the setting was ever written, even with an invalid value.
    [[nodiscard]] bool contains(const HVContextKey &key) const;

    /*!
     * The value of a setting exactly as it was written, even if it is invalid.
     * \param key the setting
     * \param defaultValue the result if the setting was never written
     */
    [[nodiscard]] QVariant get(const HVContextKey &key, const QVariant &defaultValue) const;

    /*!
     * The value of a setting exactly as it was written, else its default in Hovlets::contextKey.
     *
     * Invalid if the setting was never written and has no default, as with the host's own keys.
     */
    [[nodiscard]] QVariant get(const HVContextKey &key) const;

    /// The keys of all settings that were written, in ascending order.
    [[nodiscard]] QList<HVContextKey> keys() const;

    /*!
     * Writes a setting.
     *
     * Emits both signals on every call, even for an equal value. A value of the wrong type is
     * accepted, because values are converted where they are read. The content of a popup on screen
     * does not change.
     */
    void set(const HVContextKey &key, const QVariant &value);

Q_SIGNALS:
    /// Emitted before a setting is written, while get() still returns the old value.
    void settingWillChange(HVContextKey key);

    /// Emitted after a setting was written, when get() returns the new value.
    void settingDidChange(HVContextKey key);

private:
    class Private;
    std::unique_ptr<Private> d;
};

namespace Hovlets {

/*!
 * Writes the settings that suit most applications: the library watches the mouse, control files
 * name only files in packages, content falls back to the user's language, popups show beside their
 * control with a shadow and rounded corners, controls on the way to a popup do not hide it, Escape
 * and the wheel do, pinned popups have a slim title bar, and hidden popups free the frames of their
 * clips after half a minute. docs/settings.md lists the settings.
 *
 * They differ from the defaults, which change nothing that hosts and content rely on. Call this
 * function first, on the context that you pass to HVInterface, then overwrite settings as you like.
 * Later versions may recommend more.
 */
HOVLETS_EXPORT void useRecommendedSettings(HVContext &settings);

} // namespace Hovlets
