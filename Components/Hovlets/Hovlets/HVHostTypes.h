// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace Hovlets {

// Later versions may add values. A host must expect values that it does not know.

/// Severity of a message; a higher value is less severe.
enum HVMessageType : int {
    /// Not sent by this version of the library.
    HVMessageError = 100,
    /// Content is skipped or shown only in part: it exceeds a limit, is damaged, or names a file
    /// that it may not use. Saved state is damaged.
    HVMessageWarning = 200,
    /// Progress: indexing, look-ups.
    HVMessageInformation = 300,
    /// Mistakes in QML, missing user interfaces, and the user interface's own debug output.
    HVMessageDebug = 400
};

/// The kind of window that HVInterface::createWindow() must supply.
enum HVWindowType : int {
    /// A container for a popup that the user has pinned. "Reserved" is the older word for it.
    HVReservedWindow = 1
};

/// The kind of target that HVInterface::openExternalResource() must open.
enum HVExternalResourceType : int {
    /// A documentation topic: neither an address with a scheme nor a path.
    HVDocumentationResource = 1,
    /// An address with a scheme, such as a web page.
    HVUrlResource = 2,
    /// A path: it contains "/" but has no scheme.
    HVFileResource = 3
};

} // namespace Hovlets
