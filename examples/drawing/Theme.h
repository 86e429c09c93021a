// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Gives the application light or dark colours. Its tooltips change too, and with them the popups
/// of the library.
void applyTheme(bool dark);
