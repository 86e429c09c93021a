// SPDX-License-Identifier: Apache-2.0
#include "PointerTraces.h"

#include <QtCore/QPointF>

#include <cmath>
#include <random>

// A hand moves a pointer in a smooth stroke that speeds up and slows down, usually followed by
// smaller ones that correct it. It trembles, and a mouse reports its position about every 8 ms, in
// whole pixels. Only exactly rounded arithmetic is used, which gives the same traces on every
// machine.

namespace {

constexpr int ReportInterval = 8; // ms
constexpr int RestAtTheEnd = 450; // ms

double length(const QPointF &vector)
{
    return std::sqrt(vector.x() * vector.x() + vector.y() * vector.y());
}

class Random
{
public:
    int between(int low, int high)
    {
        return low + static_cast<int>(m_random() % static_cast<unsigned>(high - low + 1));
    }

    double share() { return between(0, 1000) / 1000.0; }
    bool chance(int percent) { return between(1, 100) <= percent; }

private:
    std::mt19937 m_random { 20240607 };
};

/// Draws one trace.
class Hand
{
public:
    Hand(Random &random, const QPointF &start)
        : m_random(random)
        , m_position(start)
    {
        report();
    }

    QVector<TraceSample> samples() const { return m_samples; }
    int time() const { return m_time; }
    QPointF position() const { return m_position; }

    /// Trembles by up to that many pixels all the time.
    void setTremor(double pixels) { m_tremor = pixels; }

    /// Reports late now and then, like a mouse on a busy machine.
    void setIrregular() { m_isIrregular = true; }

    /// A stroke of \a duration to \a target, along an arc whose height is \a bulge times its
    /// length.
    void stroke(const QPointF &target, int duration, double bulge = 0)
    {
        const QPointF from = m_position;
        const QPointF way = target - from;
        const QPointF aside = QPointF(-way.y(), way.x()) * bulge;
        const int begin = m_time;
        while (m_time - begin < duration) {
            tick();
            const double t = std::min(1.0, double(m_time - begin) / duration);
            // Speed rises and falls smoothly and peaks a little before the middle.
            const double u = t * (1.2 - 0.2 * t);
            const double s = u * u * u * (10 + u * (6 * u - 15));
            m_position = from + way * s + aside * (4 * s * (1 - s));
            report();
        }
        m_position = target;
        report();
    }

    /// The same at a constant speed, in pixels per second.
    void crawl(const QPointF &target, int speed)
    {
        const QPointF from = m_position;
        const int begin = m_time;
        const double duration = 1000.0 * length(target - from) / speed;
        while (m_time - begin < duration) {
            tick();
            m_position = from + (target - from) * std::min(1.0, (m_time - begin) / duration);
            report();
        }
    }

    /// Rests, except for a tremble by a pixel now and then.
    void rest(int duration)
    {
        const QPointF place = m_position;
        const int end = m_time + duration;
        while (m_time < end) {
            tick();
            if (m_random.chance(6)) {
                m_position = place + QPointF(m_random.between(-1, 1), m_random.between(-1, 1));
                report();
            }
        }
        m_position = place;
    }

private:
    void tick()
    {
        m_time += ReportInterval;
        if (m_isIrregular)
            m_time += m_random.chance(8) ? ReportInterval : m_random.between(-1, 1);
    }

    /// Like the display, reports only movements by whole pixels.
    void report()
    {
        QPointF shown = m_position;
        if (m_tremor > 0) {
            m_shake = m_shake * 0.7
                    + QPointF(m_random.share() - 0.5, m_random.share() - 0.5) * m_tremor;
            shown += m_shake;
        }
        const QPoint pixel(int(std::floor(shown.x() + 0.5)), int(std::floor(shown.y() + 0.5)));
        if (m_samples.isEmpty() || m_samples.constLast().position != pixel)
            m_samples.append({ pixel, m_time });
    }

    Random &m_random;
    QPointF m_position;
    QPointF m_shake;
    double m_tremor = 0;
    bool m_isIrregular = false;
    int m_time = 0;
    QVector<TraceSample> m_samples;
};

/// The time that a practised hand needs for a stroke: more for longer ones, but not in proportion.
int strokeTime(Random &random, double way)
{
    return static_cast<int>(140 + 14 * std::sqrt(way)) + random.between(-60, 120);
}

using Movement = void (*)(Random &, Hand &, const PointerTrace &, const QPointF &target);

void straight(Random &random, Hand &hand, const PointerTrace &, const QPointF &target)
{
    hand.stroke(target, strokeTime(random, length(target - hand.position())));
}

void curved(Random &random, Hand &hand, const PointerTrace &, const QPointF &target)
{
    const double bulge = (random.chance(50) ? 1 : -1) * (0.1 + 0.25 * random.share());
    hand.stroke(target, 2 * strokeTime(random, length(target - hand.position())), bulge);
}

void slow(Random &random, Hand &hand, const PointerTrace &, const QPointF &target)
{
    hand.crawl(target, random.between(35, 130));
}

void fast(Random &random, Hand &hand, const PointerTrace &, const QPointF &target)
{
    hand.stroke(target, random.between(60, 140));
}

void overshooting(Random &random, Hand &hand, const PointerTrace &, const QPointF &target)
{
    const QPointF way = target - hand.position();
    hand.stroke(target + way * (0.1 + 0.25 * random.share()), strokeTime(random, length(way)));
    hand.rest(random.between(30, 90));
    hand.stroke(target, random.between(120, 260));
}

/// Pauses anywhere on the way, for too short a time to be intentional.
void pausing(Random &random, Hand &hand, const PointerTrace &, const QPointF &target)
{
    const QPointF start = hand.position();
    const int stops = random.between(1, 3);
    for (int stop = 1; stop <= stops; ++stop) {
        const double share = (stop - 0.6 * random.share()) / (stops + 1);
        const QPointF place = start + (target - start) * share;
        hand.stroke(place, strokeTime(random, length(place - hand.position())));
        hand.rest(random.between(40, 160));
    }
    hand.stroke(target, strokeTime(random, length(target - hand.position())));
}

/// Pauses for longer where there is no control, as if somebody asked a question.
void hesitating(Random &random, Hand &hand, const PointerTrace &trace, const QPointF &target)
{
    const QPointF start = hand.position();
    constexpr int Steps = 20;
    for (int step = Steps - 1; step > 0; --step) {
        const QPointF place = start + (target - start) * (double(step) / Steps);
        const bool isFree = trace.scene.controlAt(place.toPoint()) < 0
                && !trace.scene.popupOf(trace.origin).contains(place.toPoint());
        if (isFree) {
            hand.stroke(place, strokeTime(random, length(place - start)));
            hand.rest(random.between(250, 600));
            break;
        }
    }
    hand.stroke(target, strokeTime(random, length(target - hand.position())));
}

/// Resembles recordings of people: a stroke that misses its target, then one to three that correct
/// it, along arcs, trembling, reported at uneven intervals.
void handlike(Random &random, Hand &hand, const PointerTrace &, const QPointF &target)
{
    hand.setTremor(0.6 + random.share());
    hand.setIrregular();
    for (int stroke = random.between(1, 3); stroke > 0; --stroke) {
        const QPointF way = target - hand.position();
        const double share = 0.75 + 0.35 * random.share();
        const QPointF aside = QPointF(-way.y(), way.x()) * (0.24 * (random.share() - 0.5));
        hand.stroke(hand.position() + way * share + aside, strokeTime(random, length(way)),
                    0.16 * (random.share() - 0.5));
        if (random.chance(60))
            hand.rest(random.between(30, 130));
    }
    hand.stroke(target, strokeTime(random, length(target - hand.position())));
    hand.setTremor(0);
}

struct Kind
{
    const char *name;
    Movement move;
    int traces; // for each scene and side, to the popup
};

constexpr Kind Kinds[] {
    { "straight", straight, 2 },
    { "curved", curved, 2 },
    { "slow", slow, 2 },
    { "fast", fast, 1 },
    { "overshooting", overshooting, 2 },
    { "pausing", pausing, 3 },
    { "hesitating", hesitating, 1 },
    { "handlike", handlike, 4 },
};

QPointF pointIn(Random &random, const QRect &rectangle)
{
    return { rectangle.left() + random.between(0, rectangle.width() - 1) * 1.0,
             rectangle.top() + random.between(0, rectangle.height() - 1) * 1.0 };
}

/// A control other than the origin that the popup leaves visible, or -1.
int neighbour(Random &random, const PointerTrace &trace)
{
    const QVector<QRect> controls = trace.scene.controls();
    for (int tries = 0; tries < 50; ++tries) {
        const int near = trace.origin + random.between(-4, 4);
        const int aim = random.chance(60) ? near : random.between(0, controls.size() - 1);
        if (aim >= 0 && aim < controls.size() && aim != trace.origin
            && !trace.scene.popupOf(trace.origin).intersects(controls.at(aim)))
            return aim;
    }
    return -1;
}

PointerTrace drawn(Random &random, PointerTrace trace, Movement move)
{
    const QVector<QRect> controls = trace.scene.controls();
    const auto middle = [](const QRect &rectangle) {
        return rectangle.adjusted(rectangle.width() / 5, rectangle.height() / 5,
                                  -rectangle.width() / 5, -rectangle.height() / 5);
    };
    const QRect aim = trace.aim == PointerTrace::Popup ? trace.scene.popupOf(trace.origin)
                                                       : controls.at(trace.aim);
    Hand hand(random, pointIn(random, middle(controls.at(trace.origin))));
    move(random, hand, trace, pointIn(random, middle(aim)));
    trace.arrival = hand.time();
    hand.rest(RestAtTheEnd);
    trace.samples = hand.samples();
    return trace;
}

} // namespace

QVector<PointerTrace> generateTraces()
{
    Random random;
    QVector<PointerTrace> traces;
    for (const char *window : { "toolbar", "form", "menu" }) {
        for (const char *side : { "below", "above", "right", "left" }) {
            for (const Kind &kind : Kinds) {
                for (int i = 0; i < 2 * kind.traces; ++i) {
                    PointerTrace trace;
                    trace.scene = { QString::fromUtf8(window), QString::fromUtf8(side),
                                    random.between(0, 2) * 24 + 6, random.between(-2, 2) * 60 };
                    trace.kind = QString::fromUtf8(kind.name);
                    trace.origin = random.between(0, trace.scene.controls().size() - 1);
                    const bool toNeighbour = i >= kind.traces;
                    if (toNeighbour) {
                        trace.aim = neighbour(random, trace);
                        if (trace.aim < 0)
                            continue;
                    }
                    traces.append(drawn(random, trace, kind.move));
                }
            }
        }
    }
    return traces;
}
