// SPDX-License-Identifier: Apache-2.0
#include "HVPlacement.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace Hovlets {

namespace {

constexpr int EdgeDistance = 8; // to the screen's edge
constexpr int Gap = 6; // between the control and the popup
constexpr int CursorRoom = 6; // around the hot spot; at most Gap, so no control's edge interferes
constexpr QSize CursorPicture(20, 26); // an arrow's extent right of and below its hot spot

/// A range of pixels in one direction; the end is exclusive.
struct Span
{
    int begin;
    int end;

    int length() const { return end - begin; }
    bool contains(const Span &other) const { return begin <= other.begin && other.end <= end; }
    bool touches(const Span &other) const { return begin < other.end && other.begin < end; }
    int shared(const Span &other) const
    {
        return std::max(0, std::min(end, other.end) - std::max(begin, other.begin));
    }
};

Span across(const QRect &rectangle, HVSide side)
{
    const bool vertical = side == HVSide::Below || side == HVSide::Above;
    return vertical ? Span { rectangle.y(), rectangle.y() + rectangle.height() }
                    : Span { rectangle.x(), rectangle.x() + rectangle.width() };
}

Span along(const QRect &rectangle, HVSide side)
{
    const bool vertical = side == HVSide::Below || side == HVSide::Above;
    return across(rectangle, vertical ? HVSide::Right : HVSide::Below);
}

QRect rectangle(const Span &across, const Span &along, HVSide side)
{
    if (side == HVSide::Below || side == HVSide::Above)
        return { along.begin, across.begin, along.length(), across.length() };
    return { across.begin, along.begin, across.length(), along.length() };
}

/// The extent of a popup beside \a anchor. Its edge towards the anchor does not depend on \a
/// length.
Span besideAnchor(const QRect &anchor, int length, HVSide side)
{
    const Span taken = across(anchor, side);
    if (side == HVSide::Below || side == HVSide::Right)
        return { taken.end + Gap, taken.end + Gap + length };
    return { taken.begin - Gap - length, taken.begin - Gap };
}

/*!
 * The start of a span of \a length inside \a room, as close to \a wanted as possible and without
 * overlap with \a taken. Only the ends of the free ranges can be closest.
 */
std::optional<int> slide(int wanted, int length, const Span &room, const QVector<Span> &taken)
{
    const Span starts { room.begin, room.end - length };
    if (starts.length() < 0)
        return std::nullopt;
    QVector<int> candidates { qBound(starts.begin, wanted, starts.end), starts.begin, starts.end };
    for (const Span &span : taken)
        candidates << span.begin - length << span.end;

    std::optional<int> best;
    for (const int candidate : std::as_const(candidates)) {
        const Span span { candidate, candidate + length };
        const bool isFree = room.contains(span)
                && std::none_of(taken.begin(), taken.end(),
                                [&](const Span &other) { return span.touches(other); });
        if (isFree && (!best || std::abs(candidate - wanted) < std::abs(*best - wanted)))
            best = candidate;
    }
    return best;
}

QRect grown(const QRect &rectangle, int by)
{
    return rectangle.adjusted(-by, -by, by, by);
}

/// Finds places in left-to-right layouts.
class Search
{
public:
    explicit Search(const HVPlacementRequest &request)
        : m_request(request)
        , m_cursor(grown(QRect(request.cursor, QSize(1, 1)), CursorRoom))
        , m_cursorPicture(m_cursor.united(QRect(request.cursor, CursorPicture)))
    {
    }

    HVPlace find() const
    {
        if (const auto place = resized())
            return *place;
        const QRect control = m_request.control.intersected(m_request.area);
        if (!control.isEmpty()) {
            if (const auto place = beside(control))
                return *place;
        }
        return beside(m_cursorPicture).value_or(mostVisible());
    }

private:
    static constexpr HVSide Sides[] { HVSide::Below, HVSide::Above, HVSide::Right, HVSide::Left };

    /// The place of a popup that changes its size. Moving to another side would be worse than
    /// coming close to the screen's edge.
    std::optional<HVPlace> resized() const
    {
        if (!m_request.current)
            return std::nullopt;
        const auto &[geometry, side] = *m_request.current;
        const Span old = across(geometry, side);
        const int length = lengthAcross(side);
        const bool fromBegin = side == HVSide::Below || side == HVSide::Right;
        const Span extent = fromBegin ? Span { old.begin, old.begin + length }
                                      : Span { old.end - length, old.end };
        for (const QRect &area : areas()) {
            const auto place =
                    slid(side, extent, along(geometry, side).begin, area, along(area, side), true);
            if (place)
                return place;
        }
        return std::nullopt;
    }

    std::optional<HVPlace> beside(const QRect &anchor) const
    {
        for (const bool keepClear : { true, false }) {
            for (const QRect &area : areas()) {
                for (const HVSide side : Sides) {
                    const Span extent = besideAnchor(anchor, lengthAcross(side), side);
                    const auto place = slid(side, extent, along(anchor, side).begin, area,
                                            reach(side, anchor, area), keepClear);
                    if (place)
                        return place;
                }
            }
        }
        return std::nullopt;
    }

    /// The popup with \a extent across the side, as close to \a wanted along it as there is room.
    std::optional<HVPlace> slid(HVSide side, const Span &extent, int wanted, const QRect &area,
                                const Span &room, bool keepClear) const
    {
        if (!across(area, side).contains(extent))
            return std::nullopt;
        QVector<Span> taken;
        const auto leaveOut = [&, side = side](const QRect &obstacle) {
            if (!obstacle.isEmpty() && across(obstacle, side).touches(extent))
                taken.append(along(obstacle, side));
        };
        if (!m_request.current || !m_request.current->geometry.contains(m_request.cursor))
            leaveOut(m_cursor);
        if (keepClear)
            std::for_each(m_request.keepClear.begin(), m_request.keepClear.end(), leaveOut);

        const int length = lengthAlong(side);
        const auto begin = slide(wanted, length, room, taken);
        if (!begin)
            return std::nullopt;
        return HVPlace { rectangle(extent, { *begin, *begin + length }, side), side };
    }

    /// The range along the anchor, limited by the screen, in which the popup touches it at least at
    /// a corner.
    Span reach(HVSide side, const QRect &anchor, const QRect &area) const
    {
        const Span room = along(area, side);
        const Span beside = along(anchor, side);
        const int length = lengthAlong(side);
        return { std::max(room.begin, std::min(beside.begin - length + 1, room.end - length)),
                 std::min(room.end, std::max(beside.end - 1 + length, room.begin + length)) };
    }

    /// The place on the side of the cursor that shows the most of a popup without enough room.
    HVPlace mostVisible() const
    {
        HVPlace best;
        qint64 mostPixels = -1;
        for (const HVSide side : Sides) {
            const Span extent = besideAnchor(m_cursorPicture, lengthAcross(side), side);
            const Span room = along(m_request.area, side);
            const int last = std::max(room.begin, room.end - lengthAlong(side));
            const int begin = qBound(room.begin, along(m_cursorPicture, side).begin, last);
            const Span length { begin, begin + lengthAlong(side) };
            const qint64 pixels =
                    qint64(across(m_request.area, side).shared(extent)) * room.shared(length);
            if (pixels > mostPixels) {
                mostPixels = pixels;
                best = { rectangle(extent, length, side), side };
            }
        }
        return best;
    }

    std::array<QRect, 2> areas() const
    {
        return { grown(m_request.area, -EdgeDistance), m_request.area };
    }
    int lengthAcross(HVSide side) const
    {
        return across(QRect(QPoint(), m_request.popup), side).length();
    }
    int lengthAlong(HVSide side) const
    {
        return along(QRect(QPoint(), m_request.popup), side).length();
    }

    const HVPlacementRequest &m_request;
    QRect m_cursor;
    QRect m_cursorPicture;
};

QRect mirrored(const QRect &rectangle)
{
    return { -rectangle.x() - rectangle.width(), rectangle.y(), rectangle.width(),
             rectangle.height() };
}

HVPlace mirrored(const HVPlace &place)
{
    HVSide side = place.side;
    if (side == HVSide::Left || side == HVSide::Right)
        side = side == HVSide::Left ? HVSide::Right : HVSide::Left;
    return { mirrored(place.geometry), side };
}

HVPlacementRequest mirrored(HVPlacementRequest request)
{
    request.control = mirrored(request.control);
    request.area = mirrored(request.area);
    request.cursor = mirrored(QRect(request.cursor, QSize(1, 1))).topLeft();
    for (QRect &region : request.keepClear)
        region = mirrored(region);
    if (request.current)
        request.current = mirrored(*request.current);
    return request;
}

} // namespace

HVPlace placeBeside(const HVPlacementRequest &request)
{
    if (request.direction == Qt::LeftToRight)
        return Search(request).find();
    const HVPlacementRequest leftToRight = mirrored(request);
    return mirrored(Search(leftToRight).find());
}

} // namespace Hovlets
