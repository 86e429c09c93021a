// SPDX-License-Identifier: Apache-2.0
#include "HVSafePath.h"

#include <algorithm>
#include <cmath>

namespace Hovlets {

namespace {

// A resting hand trembles by a pixel or two.
constexpr int RestExtent = 4; // px
constexpr double Progress = 3; // px towards the popup
constexpr int HeadingGrace = 40; // ms

constexpr int BetweenMargin = 24; // px around the area between the control and the popup
constexpr qint64 HeadingSpan = 120; // ms over which the direction is measured
constexpr double HeadingDistance = 3; // px; shorter movements have no direction
constexpr double HeadingSpread = 0.25; // of the distance; hands do not move in straight lines

double distanceTo(const QRect &rectangle, const QPoint &position)
{
    const int x =
            std::max({ rectangle.left() - position.x(), 0, position.x() - rectangle.right() });
    const int y =
            std::max({ rectangle.top() - position.y(), 0, position.y() - rectangle.bottom() });
    return std::hypot(x, y);
}

/// A range of a parameter, narrowed by linear conditions.
class Range
{
public:
    Range(double low, double high)
        : m_low(low)
        , m_high(high)
    {
    }

    /// Restricts the range to values t for which \a offset + \a slope * t is at most 0.
    void keepNonPositive(double offset, double slope)
    {
        if (slope > 0)
            m_high = std::min(m_high, -offset / slope);
        else if (slope < 0)
            m_low = std::max(m_low, -offset / slope);
        else if (offset > 0)
            m_high = m_low - 1;
    }

    bool isEmpty() const { return m_low > m_high; }

private:
    double m_low;
    double m_high;
};

} // namespace

void HVSafePath::begin(const QRect &origin, const QRect &popup, int dwell)
{
    m_origin = origin;
    m_popup = popup;
    m_dwell = dwell;
    m_over = Over::Origin;
    m_count = 0;
}

HVSafePath::Verdict HVSafePath::pointerMoved(const QPoint &position, qint64 time, Over over,
                                             quint64 control)
{
    m_now = std::max(m_now, time);
    const bool isNew = over != m_over || control != m_control;
    m_over = over;
    m_control = control;
    if (over == Over::Origin || over == Over::Popup) {
        m_count = 0;
        return Verdict::Keep;
    }
    m_samples[m_count++ % m_samples.size()] = { position, m_now, distanceTo(m_popup, position) };
    m_isBetween = isBetween(position);
    if (isNew)
        m_entered = m_now;
    const size_t rest = beginningOfRest();
    m_since = std::max(m_entered, sample(rest).time);
    m_grace = wasHeadingForPopup(rest) ? HeadingGrace : 0;
    return verdictAt(m_now);
}

HVSafePath::Verdict HVSafePath::verdictAt(qint64 time) const
{
    if (m_over == Over::Origin || m_over == Over::Popup)
        return Verdict::Keep;
    if (m_over == Over::Nothing && m_isBetween)
        return Verdict::Keep;
    return time < deadline() ? Verdict::Wait : Verdict::Change;
}

qint64 HVSafePath::deadline() const
{
    return m_dwell > 0 ? m_since + m_dwell + m_grace : m_since;
}

const HVSafePath::Sample &HVSafePath::sample(size_t stepsBack) const
{
    return m_samples[(m_count - 1 - stepsBack) % m_samples.size()];
}

/// The number of steps back to the oldest sample.
size_t HVSafePath::oldestSample() const
{
    return std::min(m_count, m_samples.size()) - 1;
}

/// The number of steps back to the sample since which the pointer has not left its place.
size_t HVSafePath::beginningOfRest() const
{
    const Sample &now = sample(0);
    QPoint least = now.position;
    QPoint most = now.position;
    for (size_t back = 1; back <= oldestSample(); ++back) {
        const QPoint &position = sample(back).position;
        least = { std::min(least.x(), position.x()), std::min(least.y(), position.y()) };
        most = { std::max(most.x(), position.x()), std::max(most.y(), position.y()) };
        const QPoint extent = most - least;
        if (std::max(extent.x(), extent.y()) > RestExtent
            || sample(back).distance - now.distance >= Progress)
            return back - 1;
    }
    return oldestSample();
}

/// Whether the point is in the convex hull of the control and the popup. A point of the hull is in
/// a rectangle that is somewhere between the two, where each edge moves at its own pace.
bool HVSafePath::isBetween(const QPoint &position) const
{
    const int m = BetweenMargin;
    const QRect from = m_origin.adjusted(-m, -m, m, m);
    const QRect to = m_popup.adjusted(-m, -m, m, m);
    Range way(0, 1);
    way.keepNonPositive(from.left() - position.x(), to.left() - from.left());
    way.keepNonPositive(position.x() - from.right(), from.right() - to.right());
    way.keepNonPositive(from.top() - position.y(), to.top() - from.top());
    way.keepNonPositive(position.y() - from.bottom(), from.bottom() - to.bottom());
    return !way.isEmpty();
}

/// Whether the extension of the movement that ended at that sample meets the popup, or from afar,
/// nearly meets it.
bool HVSafePath::wasHeadingForPopup(size_t stepsBack) const
{
    const Sample &now = sample(stepsBack);
    Sample before = now;
    for (size_t back = stepsBack + 1; back <= oldestSample(); ++back) {
        if (now.time - sample(back).time > HeadingSpan)
            break;
        before = sample(back);
    }
    const QPoint moved = now.position - before.position;
    if (std::hypot(moved.x(), moved.y()) < HeadingDistance)
        return false;
    const int spread =
            BetweenMargin + static_cast<int>(HeadingSpread * distanceTo(m_popup, now.position));
    const QRect target = m_popup.adjusted(-spread, -spread, spread, spread);
    Range ahead(0, 1e9);
    ahead.keepNonPositive(target.left() - now.position.x(), -moved.x());
    ahead.keepNonPositive(now.position.x() - target.right(), moved.x());
    ahead.keepNonPositive(target.top() - now.position.y(), -moved.y());
    ahead.keepNonPositive(now.position.y() - target.bottom(), moved.y());
    return !ahead.isEmpty();
}

} // namespace Hovlets
