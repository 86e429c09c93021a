// SPDX-License-Identifier: Apache-2.0
#include "FirstShow.h"

#include "GeneratedContent.h"
#include "HVContext.h"
#include "HVInterface.h"
#include "HVManager.h"
#include "HVWarmUp.h"
#include "HVWidget.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDeadlineTimer>
#include <QtCore/QEventLoop>
#include <QtCore/QTimer>
#include <QtGui/QWindow>
#include <QtWidgets/QWidget>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <vector>

using namespace Hovlets;

namespace {

constexpr int Pause = 200; // ms, for what a window leaves to do
constexpr int LaterShows = 7;

/// Processor time of all threads of this process, including those of the OpenGL driver.
double processSeconds()
{
    timespec time = {};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

void runEvents(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

/// Runs events until \a widget is on the screen, where the event that says so paints it.
bool waitUntilPainted(const QWidget &widget)
{
    const QDeadlineTimer deadline(10000);
    const auto isPainted = [&] {
        const QWindow *window = widget.window()->windowHandle();
        return window && window->isExposed();
    };
    QTimer patience; // wakes the loop in case that nothing happens
    patience.start(1000);
    while (!isPainted() && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return isPainted();
}

class Host
{
public:
    explicit Host(bool warmsUp)
        : m_content(1, 30000, 1)
        , m_control(&m_window)
    {
        m_start = processSeconds();
        HVContext settings;
        useRecommendedSettings(settings);
        settings.set(HVKeyHideDelay, 0);
        settings.set(HVKeyShowFadeDuration, 0);
        settings.set(HVKeyExtraComponentPath, QStringLiteral(HOVLETS_PACKAGES "/Default.hovlets"));
        if (warmsUp)
            settings.set(HVKeyWarmUp, GeneratedContent::key(0, 0));
        m_host = std::make_unique<HVInterface>(settings, QStringList());
        m_manager = std::make_unique<HVManager>(m_host.get(), settings,
                                                QStringList { m_content.path() }, nullptr);
        m_window.setGeometry(100, 100, 200, 100);
        m_control.setGeometry(20, 20, 80, 30);
        m_window.show();
    }

    /// The time until the window is painted; 0 if it is not.
    double start() { return waitUntilPainted(m_window) ? processSeconds() - m_start : 0; }

    void warmUp()
    {
        auto *warmUp = m_manager->findChild<HVWarmUp *>();
        for (int step = 0; step < 100 && warmUp && warmUp->isRunning(); ++step) {
            warmUp->takeStep();
            runEvents(10);
        }
    }

    /// The time until the popup for the next entry is painted; 0 if it is not.
    double show()
    {
        const double start = processSeconds();
        const QString key = GeneratedContent::key(0, ++m_shown);
        const bool isShown = m_manager->show(key, m_control.mapToGlobal(QPoint(5, 5)), &m_control)
                && waitUntilPainted(*m_manager->widget());
        return isShown ? processSeconds() - start : 0;
    }

    void hide()
    {
        runEvents(Pause);
        m_manager->widget()->hide();
        runEvents(Pause);
    }

private:
    GeneratedContent m_content;
    QWidget m_window;
    QWidget m_control;
    std::unique_ptr<HVInterface> m_host;
    std::unique_ptr<HVManager> m_manager;
    double m_start = 0;
    int m_shown = 0;
};

} // namespace

int measureFirstShow(bool warmsUp)
{
    Host host(warmsUp);
    const double start = host.start();
    runEvents(Pause); // the window manager may move it
    if (warmsUp)
        host.warmUp();
    const double first = host.show();
    std::vector<double> later;
    for (int i = 0; i < LaterShows; ++i) {
        host.hide();
        later.push_back(host.show());
    }
    std::sort(later.begin(), later.end());
    std::printf("%.6f %.6f %.6f\n", start, first, later[later.size() / 2]);
    return start > 0 && first > 0 && later.front() > 0 ? 0 : 1;
}
