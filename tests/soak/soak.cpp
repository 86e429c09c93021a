// SPDX-License-Identifier: Apache-2.0
// Shows popups, by default 100,000, every tenth with a clip. Compares the memory, handles and
// threads of the process at the end with those after the first tenth:
//
//   soak [SHOWS]
#include "ClipFolder.h"
#include "DefaultUiBench.h"
#include "TestMain.h"

#include "HVResidentMemory.h"

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtWidgets/QApplication>

#include <cstdio>

using namespace Hovlets;

namespace {

constexpr int Tenths = 10;
constexpr int KeyCount = 20; // every tenth has a clip
constexpr double MostGrowth = 1.05;

struct Holdings
{
    double megabytes;
    int handles;
    int threads;
};

int entriesOf(const char *folder)
{
    return static_cast<int>(
            QDir(QString::fromLatin1(folder))
                    .entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::System)
                    .size());
}

Holdings holdings()
{
    return { static_cast<double>(residentMemory()) / (1024 * 1024), entriesOf("/proc/self/fd"),
             entriesOf("/proc/self/task") };
}

QByteArray entries()
{
    QByteArray all;
    for (int key = 0; key < KeyCount; ++key) {
        const QByteArray number = QByteArray::number(key);
        const QByteArray clip = key % 10 == 0 ? " clip=\"clip.mp4\"" : "";
        all += DefaultUiBench::entry("title=\"Tool " + number + "\" shortcut=\"Ctrl+T\"" + clip,
                                     "<p>What tool " + number
                                             + " does.</p><link href=\"topic\">More</link>",
                                     "key" + number);
    }
    return all;
}

/// Waits for the frames, threads and deletions of a show.
void settle(int milliseconds)
{
    QElapsedTimer timer;
    timer.start();
    do {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    } while (timer.elapsed() < milliseconds);
}

Holdings showAndReport(DefaultUiBench &bench, int tenth, int shows)
{
    for (int i = 0; i < shows; ++i) {
        const int key = i % KeyCount;
        bench.show(QStringLiteral("key%1").arg(key));
        settle(key % 10 == 0 ? 20 : 0);
        if (i % 50 == 49)
            bench.host.popup()->hide();
    }
    bench.host.forgetMessages();
    bench.host.shortcutsAskedFor = {};
    const Holdings now = holdings();
    std::printf("%8d %12.1f %8d %8d\n", tenth * shows, now.megabytes, now.handles, now.threads);
    std::fflush(stdout);
    return now;
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    const QApplication application(argc, argv);
    filterTestLog();
    const int shows = argc > 1 ? qMax(Tenths, QByteArray(argv[1]).toInt()) : 100000;

    DefaultUiBench bench(entries());
    const ClipFolder clips;
    const QString clip = clips.clip(QStringLiteral("clip.mp4"), QStringLiteral("160x90"),
                                    QStringLiteral("-t 1 -pix_fmt yuv420p"));
    const QDir package(
            bench.folder.path() + QLatin1Char('/')
            + QDir(bench.folder.path()).entryList({ QStringLiteral("*.hovlets") }).value(0));
    package.mkpath(QStringLiteral("Resources"));
    if (!QFile::copy(clip, package.filePath(QStringLiteral("Resources/clip.mp4")))) {
        std::fprintf(stderr, "soak: cannot put the clip into the package\n");
        return 2;
    }

    std::printf("%8s %12s %8s %8s\n", "shows", "memory MB", "handles", "threads");
    const Holdings first = showAndReport(bench, 1, shows / Tenths);
    Holdings last = first;
    for (int tenth = 2; tenth <= Tenths; ++tenth)
        last = showAndReport(bench, tenth, shows / Tenths);

    const double growth = last.megabytes / first.megabytes;
    std::printf("memory at the end / after a tenth: %.3f (at most %.2f)\n", growth, MostGrowth);
    return growth <= MostGrowth && last.handles <= first.handles + 2
                    && last.threads <= first.threads + 2
            ? 0
            : 1;
}
