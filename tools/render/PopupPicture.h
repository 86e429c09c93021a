// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGui/QImage>

namespace Hovlets {
class HVView;
}

namespace HovletsTool {

/// Completes \a picture of \a view with the pixels that its popup has to the right of and below it.
[[nodiscard]] QImage withRim(const QImage &picture, const Hovlets::HVView &view);

/// Likewise for a view with transparent corners, which draws its own outline.
[[nodiscard]] QImage inRoundedWindow(const QImage &picture, const Hovlets::HVView &view);

/// Completes \a picture of \a view, which has transparent corners, with what HVKeySurface draws
/// around its popup: outline, shadow, and an arrow at the top. All else is transparent.
[[nodiscard]] QImage onSurface(const QImage &picture, const Hovlets::HVView &view);

} // namespace HovletsTool
