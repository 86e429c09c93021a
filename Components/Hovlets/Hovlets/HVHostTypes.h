// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace Hovlets {

/// Severity of a message; a higher value is less severe.
enum HVMessageType : int {
    HVMessageError = 100,
    HVMessageWarning = 200,
    HVMessageInformation = 300,
    HVMessageDebug = 400
};

/// What kind of window HVInterface::createWindow() is asked for.
enum HVWindowType : int {
    /// A container for a popup that the user has pinned.
    HVReservedWindow = 1
};

/// What HVInterface::openExternalResource() is asked to open.
enum HVExternalResourceType : int {
    /// A documentation topic: neither an address with a scheme nor a path.
    HVDocumentationResource = 1,
    /// An address with a scheme, such as a web page.
    HVUrlResource = 2,
    /// A path: it contains "/" and lacks a scheme.
    HVFileResource = 3
};

} // namespace Hovlets
