// SPDX-License-Identifier: Apache-2.0
#include "HoverTest.h"
#include "Pointer.h"
#include "PointerTraces.h"
#include "TestMain.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QEventLoop>
#include <QtCore/QFile>
#include <QtCore/QTimer>
#include <QtGui/QCursor>
#include <QtWidgets/QApplication>

using namespace Hovlets;

namespace {

constexpr int Stall = 40; // ms; a replay with a move that is later says nothing about the path

QString keyOf(int control)
{
    return QStringLiteral("c%1").arg(control);
}

/// A window with the controls of a scene.
class TraceWindow : public QWidget
{
public:
    explicit TraceWindow(const TraceScene &scene)
    {
        setWindowFlag(Qt::FramelessWindowHint);
        const QVector<QRect> controls = scene.controls();
        QRect all;
        for (const QRect &control : controls)
            all |= control;
        setGeometry(all.adjusted(-150, -150, 150, 150));
        for (int i = 0; i < controls.size(); ++i) {
            auto *button = new QPushButton(this);
            button->setObjectName(keyOf(i));
            button->setGeometry(controls.at(i).translated(-pos()));
        }
        show();
        activateWindow();
    }
};

/// Moves the pointer along \a trace. Returns how many ms the latest move was late.
qint64 replay(const PointerTrace &trace)
{
    const int begin = trace.samples.constFirst().time;
    qint64 late = 0;
    QEventLoop loop;
    QElapsedTimer clock;
    clock.start();
    for (const TraceSample &sample : trace.samples) {
        const int due = sample.time - begin;
        QTimer::singleShot(due, Qt::PreciseTimer, &loop, [&clock, &late, &sample, due] {
            QCursor::setPos(sample.position); // the X server moves the pointer
            late = qMax(late, clock.elapsed() - due);
        });
    }
    const int end = trace.samples.constLast().time - begin + 1;
    QTimer::singleShot(end, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
    return late;
}

/// The shortest trace of each window and popup side that aims at the popup or, for every third,
/// at a neighbour.
QVector<PointerTrace> chosenTraces()
{
    QFile file(QStringLiteral(HOVLETS_TRACES));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read the traces");
    const QVector<PointerTrace> all = readTraces(file.readAll());
    const char *kinds[] = { "straight", "pausing",    "handlike",
                            "curved",   "hesitating", "overshooting" };
    QVector<PointerTrace> chosen;
    for (const char *window : { "toolbar", "form", "menu" }) {
        for (const char *side : { "below", "above", "right", "left" }) {
            const auto index = chosen.size();
            const bool toPopup = index % 3 != 2;
            const QString kind = QString::fromUtf8(kinds[index % 6]);
            const PointerTrace *best = nullptr;
            for (const PointerTrace &trace : all) {
                if (trace.scene.window == QLatin1String(window)
                    && trace.scene.side == QLatin1String(side) && trace.kind == kind
                    && (trace.aim == PointerTrace::Popup) == toPopup
                    && (!best || trace.arrival < best->arrival))
                    best = &trace;
            }
            if (!best)
                qFatal("no trace of %s, %s, %s", window, side, qPrintable(kind));
            chosen.append(*best);
        }
    }
    return chosen;
}

} // namespace

/// Replays pointer traces with the real pointer.
class tst_EndToEndTraces : public HoverTest
{
    Q_OBJECT

public:
    tst_EndToEndTraces()
    {
        QStringList keys;
        for (int i = 0; i < 24; ++i)
            keys += keyOf(i);
        m_folder.addPackage(QStringLiteral("Pack"), keys);
        m_folder.add(QStringLiteral("Pack.hovlets/ui/HovletsUI.qml"),
                     PackageFolder::userInterface(300, 160, "color: 'steelblue'"));
    }

private Q_SLOTS:
    void shouldShowWhatThePointerAimsAt_data()
    {
        QTest::addColumn<int>("index");
        const QVector<PointerTrace> traces = chosenTraces();
        for (int i = 0; i < traces.size(); ++i)
            QTest::newRow(qPrintable(traces.at(i).name())) << i;
    }

    void shouldShowWhatThePointerAimsAt()
    {
        QFETCH(int, index);
        const PointerTrace trace = chosenTraces().at(index);
        m_window.reset();
        TraceWindow window(trace.scene);
        QVERIFY(QTest::qWaitForWindowActive(&window));
        HVContext &settings = m_host->manager()->context();
        settings.set(HVKeySafePath, true);
        askForTooltipsAfter(20); // without the path, any pause on the way would change the popup
        const QPoint start = trace.samples.constFirst().position;
        const QString key = keyOf(trace.origin);
        QElapsedTimer patience;
        for (patience.start(); !patience.hasExpired(Patience);) {
            const QPoint offset = trace.scene.popupOf(trace.origin).topLeft() - start;
            settings.set(HVKeyCursorOffset, QSize(offset.x(), offset.y()));
            QVERIFY(rest(start, [&] { return isShowing(key.toUtf8()); }));
            Pointer::moveTo(start);
            m_host->shortcutsAskedFor.clear();
            if (replay(trace) > Stall) {
                popup()->hide();
                Pointer::moveAway();
                continue;
            }
            if (trace.aim == PointerTrace::Popup) {
                QTRY_COMPARE(QApplication::widgetAt(QCursor::pos()), m_host->view());
                QVERIFY(isShowing(key.toUtf8()));
                QCOMPARE(m_host->shortcutsAskedFor, QStringList());
            } else {
                QTRY_VERIFY(isShowing(keyOf(trace.aim).toUtf8()));
            }
            return;
        }
        QFAIL("each time, the machine was too busy to move the pointer in time");
    }
};

HOVLETS_TEST_MAIN(tst_EndToEndTraces)
#include "tst_endtoend_traces.moc"
