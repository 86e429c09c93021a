// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Gives the whole application light or dark colours, its tooltips included, from which the popups
/// of the library take theirs.
void applyTheme(bool dark);
