// SPDX-License-Identifier: Apache-2.0
#include "HVSettings.h"

#include <QtCore/QSize>

#include <algorithm>

namespace Hovlets {

namespace {

// To add a setting, add its enumerator to HVContext.h and a row here, ordered by key. A test
// compares both with each other and with docs/settings.md.
#define HV_SETTING(key, type, value, note, read, meaning) \
    HVSetting \
    { \
        key, QStringLiteral(#key), QStringLiteral(type), value, QStringLiteral(note), \
                QStringLiteral(read), QStringLiteral(meaning) \
    }

QList<HVSetting> makeSettings()
{
    // clang-format off
    return {
        HV_SETTING(HVKeyHideDelay, "float, ms", 3000, "",
                   "when the mouse leaves the popup",
                   "the popup hides after this time; 0 or less: it stays"),
        HV_SETTING(HVKeyPopupIsWindow, "bool", false, "",
                   "when a popup is created: at the first show, and after one is pinned",
                   "true: an ordinary window with a frame, false: a tooltip window"),
        HV_SETTING(HVKeyPackageSuffix, "string", QStringLiteral("hovlets"), "",
                   "while packages are indexed, and when package names are determined",
                   "packages are the folders whose names end in a dot and this"),
        HV_SETTING(HVKeyExtraComponentPath, "string, path", QString(), "none",
                   "at each look-up of a file",
                   "one more folder that is searched for the files of every package, after its own"),
        HV_SETTING(HVKeyRichUiFile, "string", QStringLiteral("ui/HovletsUI.qml"), "",
                   "at each show",
                   "the QML file of the full popup, below the package"),
        HV_SETTING(HVKeySimpleUiFile, "string", QStringLiteral("ui/SimpleTooltip.qml"), "",
                   "at each show",
                   "the QML file of the simple popup"),
        HV_SETTING(HVKeyResourceFolder, "string", QStringLiteral("Resources"), "",
                   "at each look-up of a resource",
                   "the folder of images and clips, below the package"),
        HV_SETTING(HVKeyTrackHover, "bool", false, "",
                   "once, by the constructor",
                   "the library watches the mouse with an event filter on the application"),
        HV_SETTING(HVKeySafeMargin, "QSize, px", QSize(20, 20), "",
                   "at each move of the mouse",
                   "margin around the popup in which the mouse counts as over it"),
        HV_SETTING(HVKeyCursorOffset, "QSize, px", QSize(35, 30), "",
                   "at each show",
                   "distance from the cursor to the popup's top-left corner"),
        HV_SETTING(HVKeySimpleMode, "bool", false, "",
                   "at each show",
                   "true: the simple popup, false: the full one"),
        HV_SETTING(HVKeyDocumentationEnabled, "bool", QVariant(), "",
                   "at each show, and when a topic is opened",
                   "whether documentation topics can be opened. Not set: QML sees false, and topics "
                   "open"),
        HV_SETTING(HVKeyLinksEnabled, "bool", true, "",
                   "when a link is opened",
                   "whether addresses and files can be opened"),
        HV_SETTING(HVKeyFallbackKey, "string", QString(), "none",
                   "at each hover without content",
                   "key of the entry, in the fallback locale, to show for a control that has none"),
        HV_SETTING(HVKeyFallbackLocale, "string, locale", QStringLiteral("en_US"), "",
                   "at each look-up",
                   "locale of the entry to show if there is none in the preferred locale"),
        HV_SETTING(HVKeyLocale, "string, locale", QStringLiteral("en_US"), "",
                   "at each look-up and translation",
                   "preferred locale of entries, and locale of translation files. If it is empty or not "
                   "set, these use `HVKeyFallbackLocale`, and if that is empty or not set, the "
                   "system's locale"),
        HV_SETTING(HVKeySuspended, "bool", false, "",
                   "at each hover",
                   "true: no popup is shown"),
        HV_SETTING(HVKeyClearIndexOnSetup, "bool", true, "",
                   "by `HVIndex::setup()`",
                   "whether an index clears itself when it is set up; for indexes supplied by the "
                   "host"),
        HV_SETTING(HVKeyAlwaysShowTooltips, "bool", false, "",
                   "once, by the constructor",
                   "tooltips in inactive windows too"),
        HV_SETTING(HVKeyKeyDataFile, "string, path", QString(), "none",
                   "at each look-up",
                   "a file with further attributes by key, see [content](content.md#key-data-file)"),
        HV_SETTING(HVKeyRequiredModifiers, "int, `Qt::KeyboardModifiers`", 0, "any",
                   "at each hover",
                   "popups show only while exactly these are held"),
        HV_SETTING(HVKeyControlFolderName, "string", QStringLiteral("Control"), "",
                   "while packages are indexed",
                   "folder of a package with its control files"),
        HV_SETTING(HVKeyTranslationFolder, "string", QStringLiteral("l10n"), "",
                   "at each translation",
                   "folder of a package with its translation files"),
        HV_SETTING(HVKeyShowFadeDuration, "int, ms", 0, "",
                   "at each show",
                   "fade-in; 0: none"),
        HV_SETTING(HVKeyHideFadeDuration, "int, ms", 300, "",
                   "when the popup hides",
                   "fade-out; 0: none"),
        HV_SETTING(HVKeyMessageLevel, "int, `HVMessageType`", 200, "",
                   "at each message",
                   "the highest type that is passed on: 100 errors, 200 warnings, 300 information, "
                   "400 debug; 0: nothing"),
        HV_SETTING(HVKeyTranslationName, "string", QStringLiteral("Hovlets"), "",
                   "at each translation",
                   "translation files are named NAME_LOCALE.qm, such as `Hovlets_de_DE.qm`"),
        HV_SETTING(HVKeyConfineContent, "bool", false, "",
                   "at each look-up of a file",
                   "true: user interfaces, resources and translations that control files name come "
                   "from the entry's search folders only, see [trust](../README.md#trust)"),
        HV_SETTING(HVKeyLanguageFallback, "bool", false, "",
                   "at each look-up and translation",
                   "true: between the preferred locale and the fallback locale, look for the preferred "
                   "language, such as fr after fr_CA. A text without a translation is looked up in "
                   "the same order, see [content](content.md#locales)"),
        HV_SETTING(HVKeyPlacement, "int, `HVPopupPlacement`", 0, "",
                   "at each show",
                   "0: at `HVKeyCursorOffset` from the cursor; 1: beside the control or its part, such "
                   "as a tab, and over it only if no side has room"),
        HV_SETTING(HVKeyKeepClear, "QRegion, global px", QVariant(), "",
                   "at each show",
                   "area that a popup beside its control leaves visible if it can, such as a "
                   "selection. Open menus are always included"),
        HV_SETTING(HVKeySafePath, "bool", false, "",
                   "at each show",
                   "true: while the mouse moves towards the popup, the controls on its way do not hide "
                   "the popup"),
        HV_SETTING(HVKeySafePathDwell, "int, ms", 180, "",
                   "at each show",
                   "with `HVKeySafePath`: another control takes over when the mouse rests on it for "
                   "this time"),
        HV_SETTING(HVKeyShowDelay, "int, ms", 0, "",
                   "at each hover while no popup is visible",
                   "how long the mouse rests before a popup shows, with `HVKeyTrackHover`; a popup "
                   "never shows before Qt's tooltip would"),
        HV_SETTING(HVKeyExpandDelay, "int, ms", 0, "never",
                   "at each show",
                   "with `HVKeySimpleMode`: the simple popup becomes the full one after the mouse has "
                   "stayed with it for this time"),
        HV_SETTING(HVKeyExpandKey, "string, key", QString(), "none",
                   "at each show",
                   "a key with its modifiers, such as `F1` or `Ctrl+Space`: it turns the simple popup into "
                   "the full one, and pins the full one. Otherwise it reaches the host, see "
                   "[levels](delay.md#levels)"),
        HV_SETTING(HVKeyDismissOnKey, "int, `HVDismissal`", 0, "nothing",
                   "at each show",
                   "input that hides a popup while the mouse is near it, combined with \"or\": 1 Escape, "
                   "2 any key except modifiers, 4 the wheel over the control. The input still "
                   "reaches its receiver"),
        HV_SETTING(HVKeyClipReleaseDelay, "int, ms", 0, "until other clips need their memory",
                   "when a popup hides",
                   "how long it keeps the decoded frames of its clips. Freed frames are decoded again "
                   "when they are needed"),
        HV_SETTING(HVKeyShowOwnTips, "bool", false, "",
                   "at each hover without content",
                   "true: controls without an entry show their own tooltip, status tip and What's "
                   "This in a popup, see [controls](controls.md#tooltips-in-the-popup)"),
        HV_SETTING(HVKeyPinnedInTaskbar, "bool", false, "",
                   "when a popup is pinned",
                   "true: a pinned popup is an ordinary window with an entry in the taskbar, false: a "
                   "tool window that stays above the window of its control. A container that the host "
                   "supplies stays as it is"),
        HV_SETTING(HVKeyWarmUp, "string, key", QString(), "nothing is prepared",
                   "once, by the constructor",
                   "a typical entry. The library loads and renders it without showing it while the "
                   "application is idle after its start, so the first popup appears almost as fast as "
                   "later ones"),
        HV_SETTING(HVKeyExactToolTipColors, "bool", false, "",
                   "at each show",
                   "false: where the palette's tooltips are pale yellow, the default user interface has the "
                   "colours of lists and text fields; true: the palette's, see [theming](theming.md)"),
        HV_SETTING(HVKeySurface, "bool", false, "",
                   "when a popup is created: at the first show, and after one is pinned",
                   "true: popups have a shadow, rounded corners and, beside their control, an arrow, where "
                   "the window system blends windows, see [theming](theming.md#corners-shadow-and-arrow)"),
        HV_SETTING(HVKeyOwnTitleBar, "bool", false, "",
                   "when a popup is pinned",
                   "true: a pinned popup has a slim title bar of its user interface instead of the desktop's, "
                   "and can be resized, see [pinned popups](hosts.md#pinned-popups)"),
    };
    // clang-format on
}

#undef HV_SETTING

} // namespace

const QList<HVSetting> &allSettings()
{
    static const QList<HVSetting> settings = makeSettings();
    return settings;
}

QVariant defaultOf(HVContextKey key)
{
    const QList<HVSetting> &settings = allSettings();
    const auto found = std::lower_bound(
            settings.cbegin(), settings.cend(), key,
            [](const HVSetting &setting, HVContextKey wanted) { return setting.key < wanted; });
    return found != settings.cend() && found->key == key ? found->defaultValue : QVariant();
}

const QMap<HVContextKey, QVariant> &recommendedSettings()
{
    static const QMap<HVContextKey, QVariant> settings {
        { HVKeyTrackHover, true },
        { HVKeyConfineContent, true },
        { HVKeyLanguageFallback, true },
        { HVKeyPlacement, int(HVPlaceBesideControl) },
        { HVKeySafePath, true },
        { HVKeyDismissOnKey, HVDismissOnEscape | HVDismissOnWheel },
        { HVKeyClipReleaseDelay, 30000 },
        { HVKeySurface, true },
        { HVKeyOwnTitleBar, true },
    };
    return settings;
}

void useRecommendedSettings(HVContext &settings)
{
    const QMap<HVContextKey, QVariant> &recommended = recommendedSettings();
    for (auto setting = recommended.cbegin(); setting != recommended.cend(); ++setting)
        settings.set(setting.key(), setting.value());
}

} // namespace Hovlets
