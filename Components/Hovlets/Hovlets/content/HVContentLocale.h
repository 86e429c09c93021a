// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QLocale>

class HVContext;

// The locales that the settings name. Content is looked up in the preferred locale, then in the
// fallback locale; both default to "en_US". For translations only one locale is searched, by
// default the system's.

namespace Hovlets {

/// The value of HVKeyLocale.
QLocale preferredContentLocale(const HVContext &context);

/// The value of HVKeyFallbackLocale.
QLocale fallbackContentLocale(const HVContext &context);

/// The locale of HVKeyLocale, else of HVKeyFallbackLocale, else the system's.
QLocale translationLocale(const HVContext &context);

} // namespace Hovlets
