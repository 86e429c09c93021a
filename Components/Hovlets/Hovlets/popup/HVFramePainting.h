// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVArrow.h"

#include <QtCore/QRect>
#include <QtGui/QColor>

#include <optional>

class QPainter;

namespace Hovlets {

/// What is drawn around a popup. Lengths are in device-independent pixels.
struct HVFrameLook
{
    /// Radius of the popup's corners.
    qreal radius = 0;
    /// Background of the popup and the arrow. If it is invalid, there is only a shadow.
    QColor fill;
    /// Outline of the popup and the arrow.
    QColor line;
    std::optional<HVArrow> arrow;

    [[nodiscard]] bool operator==(const HVFrameLook &other) const
    {
        return qFuzzyCompare(1 + radius, 1 + other.radius) && fill == other.fill
                && line == other.line && arrow == other.arrow;
    }
};

/// How far the shadow reaches beyond the popup at most. A multiple of four stays a whole number of
/// pixels at a scale of 1.25, 1.5 or 1.75.
constexpr int FrameMargin = 24;

/*!
 * \brief Paints shadow, outline, background and arrow of a popup, without access to windows.
 * \param painter paints in physical pixels
 * \param popup   the popup's rectangle in physical pixels
 * \param scale   physical pixels per device-independent pixel
 */
void paintFrame(QPainter &painter, const QRect &popup, const HVFrameLook &look, qreal scale);

} // namespace Hovlets
