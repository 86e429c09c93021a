// SPDX-License-Identifier: Apache-2.0
#include "PlacementRules.h"

#include <QtCore/QDebug>

#include <algorithm>

using namespace Hovlets;

namespace {

QRect mirrored(const QRect &rectangle)
{
    return { -rectangle.x() - rectangle.width(), rectangle.y(), rectangle.width(),
             rectangle.height() };
}

HVSide mirrored(HVSide side)
{
    if (side == HVSide::Below || side == HVSide::Above)
        return side;
    return side == HVSide::Left ? HVSide::Right : HVSide::Left;
}

HVPlacementRequest mirrored(HVPlacementRequest request)
{
    request.control = mirrored(request.control);
    request.area = mirrored(request.area);
    request.cursor = mirrored(QRect(request.cursor, QSize(1, 1))).topLeft();
    for (QRect &region : request.keepClear)
        region = mirrored(region);
    if (request.current)
        request.current =
                HVPlace { mirrored(request.current->geometry), mirrored(request.current->side) };
    request.direction = request.direction == Qt::LeftToRight ? Qt::RightToLeft : Qt::LeftToRight;
    return request;
}

} // namespace

QRect inset(const QRect &area)
{
    return area.adjusted(EdgeDistance, EdgeDistance, -EdgeDistance, -EdgeDistance);
}

int RandomRequests::between(int low, int high)
{
    return low + static_cast<int>(m_random() % static_cast<unsigned>(high - low + 1));
}

HVPlacementRequest RandomRequests::next()
{
    HVPlacementRequest made;
    made.area = { between(-900, 900), between(-500, 500), between(120, 400), between(100, 300) };
    const QSize size(between(1, between(1, 4) == 1 ? made.area.width() : 60),
                     between(1, between(1, 4) == 1 ? made.area.height() : 30));
    made.control = { pointIn(made.area), size };
    made.popup = { between(1, 200), between(1, 150) };
    made.cursor = pointIn(made.control.intersected(made.area));
    made.direction = between(0, 1) ? Qt::LeftToRight : Qt::RightToLeft;
    for (int i = between(0, 3); i > 0; --i)
        made.keepClear.append({ pointIn(made.area), QSize(between(1, 80), between(1, 60)) });
    return made;
}

QPoint RandomRequests::pointIn(const QRect &area)
{
    return { between(area.left(), area.right()), between(area.top(), area.bottom()) };
}

bool hasRoomBeside(const HVPlacementRequest &request)
{
    const QRect control = request.control.intersected(request.area);
    const QRect area = inset(request.area);
    const int width = request.popup.width();
    const int height = request.popup.height();
    const auto isFree = [&](const QRect &popup) {
        return area.contains(popup)
                && std::none_of(request.keepClear.begin(), request.keepClear.end(),
                                [&](const QRect &region) { return region.intersects(popup); });
    };
    for (const int y : { control.bottom() + 1 + Gap, control.top() - Gap - height }) {
        for (int x = control.left() - width + 1; x <= control.right(); ++x) {
            if (isFree({ QPoint(x, y), request.popup }))
                return true;
        }
    }
    for (const int x : { control.right() + 1 + Gap, control.left() - Gap - width }) {
        for (int y = control.top() - height + 1; y <= control.bottom(); ++y) {
            if (isFree({ QPoint(x, y), request.popup }))
                return true;
        }
    }
    return false;
}

const char *brokenRule(const HVPlacementRequest &request, const HVPlace &place)
{
    if (place.geometry.size() != request.popup)
        return "keeps its size";
    if (place.geometry.contains(request.cursor))
        return "never covers the cursor";
    const HVPlace other = placeBeside(mirrored(request));
    if (other.geometry != mirrored(place.geometry) || other.side != mirrored(place.side))
        return "is mirrored";
    if (!hasRoomBeside(request))
        return nullptr;

    if (!inset(request.area).contains(place.geometry))
        return "keeps away from the edge";
    if (place.geometry.intersects(request.control.intersected(request.area)))
        return "does not cover the control";
    if (std::any_of(request.keepClear.begin(), request.keepClear.end(),
                    [&](const QRect &region) { return place.geometry.intersects(region); }))
        return "does not cover a region to keep clear";
    HVPlacementRequest again = request;
    again.current = place;
    if (placeBeside(again).geometry != place.geometry)
        return "stays where it is at the same size";
    return nullptr;
}

QString described(const HVPlacementRequest &request, const HVPlace &place)
{
    QString text;
    QDebug(&text) << "control" << request.control << "popup" << request.popup << "area"
                  << request.area << "cursor" << request.cursor << "clear" << request.keepClear
                  << "direction" << request.direction << "->" << place.geometry
                  << static_cast<int>(place.side);
    return text;
}
