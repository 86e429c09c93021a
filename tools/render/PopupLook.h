// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <HVContext.h>

#include <string>

namespace HovletsTool {

/// The look of a popup, and the host's data that goes into it.
struct PopupLook
{
    std::string locale;
    std::string fallbackLocale;
    bool dark = false;
    bool simple = false;
    bool surface = false; // with rounded corners and a shadow, on a transparent ground
    bool pinned = false; // with the title bar of a pinned popup
    double fontSize = 0; // in points; 0 for the desktop's
    std::string keyData; // the host's key-data file
    std::string extraPath; // the host's extra component folder
};

/// Sets the application's style, palette and font.
void applyLook(const PopupLook &look);

/// The settings of a host with this look, whose popups stay until they are told to hide. Throws a
/// ToolError when the file or the folder cannot be read.
[[nodiscard]] HVContext contextFor(const PopupLook &look);

} // namespace HovletsTool
