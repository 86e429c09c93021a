// SPDX-License-Identifier: Apache-2.0
#include "HVSafePath.h"
#include "PointerTraces.h"
#include "TestMain.h"

#include <QtCore/QFile>
#include <QtTest/QtTest>

#include <cstdio>
#include <cstring>

using namespace Hovlets;

using Over = HVSafePath::Over;
using Verdict = HVSafePath::Verdict;

namespace {

constexpr int Dwell = 180; // ms
constexpr int SafeMargin = 20; // px around the popup
constexpr int Slack = 50; // ms after the dwell, by which a neighbour has its popup

/// How a trace changed the popup.
struct Outcome
{
    int shown; // the control whose popup shows at the end
    int changes = 0;
    int changed = -1; // when the popup last changed
    bool isOverPopup = false; // whether the pointer ended there
};

/// Acts as the popup: asks the path at each move, and at the time that the path has named.
class Play
{
public:
    Play(const PointerTrace &trace, int dwell)
        : m_trace(trace)
        , m_dwell(dwell)
        , m_outcome { trace.origin }
    {
        begin();
    }

    Outcome run()
    {
        const int end = m_trace.arrival + Dwell + Slack + 100;
        for (int i = 0; i < m_trace.samples.size(); ++i) {
            const TraceSample &sample = m_trace.samples.at(i);
            move(sample.position, sample.time);
            const bool isLast = i + 1 == m_trace.samples.size();
            waitUntil(isLast ? end : m_trace.samples.at(i + 1).time);
        }
        m_outcome.isOverPopup = popup().contains(m_position);
        return m_outcome;
    }

private:
    QRect popup() const { return m_trace.scene.popupOf(m_outcome.shown); }

    void begin() { m_path.begin(m_trace.scene.controls().at(m_outcome.shown), popup(), m_dwell); }

    void move(const QPoint &position, int time)
    {
        m_position = position;
        const int control = m_trace.scene.controlAt(position);
        const int margin = SafeMargin;
        Over over = Over::Nothing;
        const QRect around = popup().adjusted(-margin, -margin, margin, margin);
        if (popup().contains(position) || (control < 0 && around.contains(position)))
            over = Over::Popup;
        else if (control >= 0)
            over = control == m_outcome.shown ? Over::Origin : Over::Other;
        if (m_path.pointerMoved(position, time, over, quint64(control) + 1) == Verdict::Change)
            change(time);
    }

    void waitUntil(int time)
    {
        if (m_path.verdictAt(time - 1) == Verdict::Change)
            change(int(m_path.deadline()));
    }

    void change(int time)
    {
        const int control = m_trace.scene.controlAt(m_position);
        if (control == m_outcome.shown || control < 0)
            return;
        m_outcome.shown = control;
        m_outcome.changed = time;
        ++m_outcome.changes;
        begin();
    }

    const PointerTrace &m_trace;
    int m_dwell;
    Outcome m_outcome;
    HVSafePath m_path;
    QPoint m_position;
};

const QVector<PointerTrace> &committedTraces()
{
    static const QVector<PointerTrace> traces = [] {
        QFile file(QStringLiteral(HOVLETS_TRACES));
        if (!file.open(QIODevice::ReadOnly))
            qFatal("cannot read the traces");
        return readTraces(file.readAll());
    }();
    return traces;
}

constexpr QRect ControlRect(100, 100, 40, 20);
constexpr QRect Popup(100, 220, 200, 100); // 100 pixels below it

HVSafePath path(int dwell = Dwell)
{
    HVSafePath made;
    made.begin(ControlRect, Popup, dwell);
    return made;
}

} // namespace

/// The generator beside this file made the traces: --write-traces FILE makes them again.
class tst_HVSafePath : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldReachThePopupWithTheSameContent()
    {
        int traces = 0;
        int lost = 0;
        int lostWithoutAPath = 0;
        for (const PointerTrace &trace : committedTraces()) {
            if (trace.aim != PointerTrace::Popup)
                continue;
            ++traces;
            const Outcome outcome = Play(trace, Dwell).run();
            if (!outcome.isOverPopup || outcome.changes > 0) {
                ++lost;
                qInfo("lost: %s", qPrintable(trace.name()));
            }
            // Without the path, a control takes over at the first pause that the desktop notices.
            constexpr int DesktopsPause = 20;
            const Outcome without = Play(trace, DesktopsPause).run();
            lostWithoutAPath += without.changes > 0;
        }
        qInfo("%d traces to the popup, %d lost it; %d would with a dwell of 20 ms", traces, lost,
              lostWithoutAPath);
        QVERIFY(traces >= 200);
        QVERIFY(100 * lost <= traces);
        QVERIFY(10 * lostWithoutAPath >= traces); // otherwise the traces would prove little
    }

    void shouldGiveANeighbourItsPopup()
    {
        int traces = 0;
        int longest = 0;
        QVector<int> delays;
        for (const PointerTrace &trace : committedTraces()) {
            if (trace.aim == PointerTrace::Popup)
                continue;
            ++traces;
            const Outcome outcome = Play(trace, Dwell).run();
            const QByteArray name = trace.name().toUtf8();
            QVERIFY2(outcome.shown == trace.aim, name);
            const int delay = outcome.changed - trace.arrival;
            longest = qMax(longest, delay);
            delays.append(delay);
            QVERIFY2(delay <= Dwell + Slack, name);
        }
        QVERIFY(traces >= 100);
        std::sort(delays.begin(), delays.end());
        qInfo("%d traces to a neighbour; its popup came %d ms after the pointer, at most %d ms",
              traces, delays.at(delays.size() / 2), longest);
    }

    void shouldHaveTracesOfEachKind()
    {
        const QVector<PointerTrace> &traces = committedTraces();
        for (const char *window : { "toolbar", "form", "menu" }) {
            for (const char *side : { "below", "above", "right", "left" }) {
                for (const char *kind : { "straight", "curved", "slow", "fast", "overshooting",
                                          "pausing", "hesitating", "handlike" }) {
                    const bool found =
                            std::any_of(traces.begin(), traces.end(), [&](const PointerTrace &t) {
                                return t.scene.window == QLatin1String(window)
                                        && t.scene.side == QLatin1String(side)
                                        && t.kind == QLatin1String(kind);
                            });
                    QVERIFY2(found, kind);
                }
            }
        }
    }

    void shouldHaveTheTracesThatTheGeneratorMakes()
    {
        QCOMPARE(writeTraces(committedTraces()), writeTraces(generateTraces()));
    }

    void shouldStayWhileThePointerIsOverTheControl()
    {
        HVSafePath safe = path();
        QCOMPARE(safe.verdictAt(1000000), Verdict::Keep);
        QCOMPARE(safe.pointerMoved({ 110, 110 }, 0, Over::Origin), Verdict::Keep);
        QCOMPARE(safe.verdictAt(1000000), Verdict::Keep);
        QCOMPARE(safe.pointerMoved({ 110, 250 }, 0, Over::Popup), Verdict::Keep);
        QCOMPARE(safe.verdictAt(1000000), Verdict::Keep);
    }

    void shouldChangeAfterARest()
    {
        HVSafePath safe = path();
        QCOMPARE(safe.pointerMoved({ 120, 150 }, 1000, Over::Other, 1), Verdict::Wait);
        QCOMPARE(safe.deadline(), 1000 + Dwell);
        QCOMPARE(safe.verdictAt(1000 + Dwell - 1), Verdict::Wait);
        QCOMPARE(safe.verdictAt(1000 + Dwell), Verdict::Change);
    }

    void shouldTreatTremblingAsRest()
    {
        HVSafePath safe = path();
        safe.pointerMoved({ 120, 150 }, 1000, Over::Other, 1);
        for (int i = 1; i < 18; ++i)
            safe.pointerMoved({ 120 + i % 3, 150 + i % 2 }, 1000 + 10 * i, Over::Other, 1);
        QCOMPARE(safe.deadline(), 1000 + Dwell);
        QCOMPARE(safe.pointerMoved({ 120, 150 }, 1000 + Dwell, Over::Other, 1), Verdict::Change);
    }

    void shouldNotMistakeACrawlToThePopupForRest()
    {
        HVSafePath safe = path();
        for (int i = 0; i < 60; ++i) // 25 pixels per second
            QCOMPARE(safe.pointerMoved({ 120, 130 + i }, 40LL * i, Over::Other, 1), Verdict::Wait);
    }

    void shouldStartAgainOnTheNextControl()
    {
        HVSafePath safe = path();
        safe.pointerMoved({ 120, 150 }, 1000, Over::Other, 1);
        safe.pointerMoved({ 121, 150 }, 1100, Over::Other, 2);
        QCOMPARE(safe.deadline(), 1100 + Dwell);
        safe.pointerMoved({ 122, 150 }, 1150, Over::Nothing);
        safe.pointerMoved({ 121, 150 }, 1200, Over::Other, 2);
        QCOMPARE(safe.deadline(), 1200 + Dwell);
    }

    void shouldNotChangeForAPointerThatMovesAbout()
    {
        HVSafePath safe = path();
        for (int i = 0; i < 40; ++i)
            QCOMPARE(safe.pointerMoved({ 400 + 10 * i, 40 }, 20LL * i, Over::Other, 1),
                     Verdict::Wait);
        QCOMPARE(safe.verdictAt(39 * 20 + Dwell), Verdict::Change);
    }

    void shouldGiveMoreTimeToAPointerThatHeadedForThePopup()
    {
        HVSafePath safe = path();
        for (int i = 0; i < 10; ++i)
            safe.pointerMoved({ 120, 130 + 5 * i }, 10LL * i, Over::Other, 1);
        QVERIFY(safe.deadline() > 90 + Dwell);
        QVERIFY(safe.deadline() <= 90 + Dwell + Slack);
        safe = path();
        for (int i = 0; i < 10; ++i)
            safe.pointerMoved({ 500 + 5 * i, 130 }, 10LL * i, Over::Other, 1);
        QCOMPARE(safe.deadline(), 90 + Dwell);
    }

    void shouldStayOverNothingOnTheWay()
    {
        HVSafePath safe = path();
        QCOMPARE(safe.pointerMoved({ 150, 170 }, 0, Over::Nothing), Verdict::Keep);
        QCOMPARE(safe.verdictAt(1000000), Verdict::Keep);
        QCOMPARE(safe.pointerMoved({ 40, 170 }, 0, Over::Nothing), Verdict::Wait);
        QCOMPARE(safe.verdictAt(Dwell), Verdict::Change);
    }

    void shouldKnowTheAreaBetweenControlAndPopup_data()
    {
        QTest::addColumn<QRect>("popup");
        QTest::addColumn<QPoint>("between");
        QTest::addColumn<QPoint>("outside");
        QTest::newRow("below") << QRect(60, 300, 400, 80) << QPoint(200, 220) << QPoint(400, 150);
        QTest::newRow("above") << QRect(60, -300, 400, 80) << QPoint(150, -60) << QPoint(450, 60);
        QTest::newRow("right") << QRect(400, 20, 100, 300) << QPoint(300, 200) << QPoint(200, 280);
        QTest::newRow("left") << QRect(-400, 20, 100, 300) << QPoint(-60, 60) << QPoint(60, 250);
        QTest::newRow("at a corner")
                << QRect(400, 400, 50, 50) << QPoint(270, 260) << QPoint(150, 400);
        QTest::newRow("around it") << QRect(0, 0, 400, 400) << QPoint(20, 20) << QPoint(450, 20);
    }

    void shouldKnowTheAreaBetweenControlAndPopup()
    {
        QFETCH(QRect, popup);
        QFETCH(QPoint, between);
        QFETCH(QPoint, outside);
        HVSafePath safe;
        safe.begin(ControlRect, popup, Dwell);
        QCOMPARE(safe.pointerMoved(between, 0, Over::Nothing), Verdict::Keep);
        QCOMPARE(safe.pointerMoved(outside, 0, Over::Nothing), Verdict::Wait);
    }

    void shouldChangeAtOnceWithoutADwell()
    {
        for (const int dwell : { 0, -100 }) {
            HVSafePath safe = path(dwell);
            QCOMPARE(safe.pointerMoved({ 120, 150 }, 1000, Over::Other, 1), Verdict::Change);
        }
    }

    void shouldHandleAClockThatGoesBack()
    {
        HVSafePath safe = path();
        safe.pointerMoved({ 120, 150 }, 1000, Over::Other, 1);
        safe.pointerMoved({ 140, 150 }, 10, Over::Other, 1);
        QCOMPARE(safe.deadline(), 1000 + Dwell);
    }

    void shouldForgetTheMovementAtTheControl()
    {
        HVSafePath safe = path();
        safe.pointerMoved({ 120, 150 }, 1000, Over::Other, 1);
        safe.pointerMoved({ 120, 110 }, 1100, Over::Origin);
        safe.pointerMoved({ 120, 150 }, 1120, Over::Other, 1);
        QCOMPARE(safe.deadline(), 1120 + Dwell);
    }
};

int main(int argc, char **argv)
{
    if (argc == 3 && std::strcmp(argv[1], "--write-traces") == 0) {
        QFile file(QString::fromLocal8Bit(argv[2]));
        const QByteArray text = writeTraces(generateTraces());
        return file.open(QIODevice::WriteOnly) && file.write(text) == text.size() ? 0 : 1;
    }
    return runTest(argc, argv, []() -> QObject * { return new tst_HVSafePath; });
}

#include "tst_hvsafepath.moc"
