// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QLocale>

class HVContext;

// The languages that the settings ask for. Content is sought in the preferred locale, then in the
// fallback one, which both default to "en_US"; translations are sought in one alone, which without
// settings is the system's.

namespace Hovlets {

/// HVKeyLocale.
QLocale preferredContentLocale(const HVContext &context);

/// HVKeyFallbackLocale.
QLocale fallbackContentLocale(const HVContext &context);

/// HVKeyLocale, else HVKeyFallbackLocale, else the system's.
QLocale translationLocale(const HVContext &context);

} // namespace Hovlets
