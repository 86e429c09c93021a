// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <HVContext.h>

#include <string>

namespace HovletsTool {

/// How a popup is to look, and what of the host goes into it.
struct PopupLook
{
    std::string locale;
    std::string fallbackLocale;
    bool dark = false;
    bool simple = false;
    double fontSize = 0; // points; 0 is the desktop's
    std::string keyData; // the host's file of attributes by key
    std::string extraPath; // its folder of components
};

/// Sets the application's style, palette and font.
void applyLook(const PopupLook &look);

/// What a host that looks like this would have set. Popups stay until they are told to go. Throws a
/// ToolError when the file or the folder cannot be read.
HVContext contextFor(const PopupLook &look);

} // namespace HovletsTool
