// SPDX-License-Identifier: Apache-2.0
#include "BenchmarkClip.h"
#include "Comparisons.h"
#include "HVClip.h"
#include "HVIdleWait.h"
#include "HVVideoController.h"
#include "HVVideoSourceFFMPEG.h"
#include "Suites.h"

#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QSemaphore>
#include <QtCore/QThread>
#include <QtCore/QUrl>

#include <unistd.h>

#include <chrono>
#include <memory>

using namespace Hovlets;

namespace {

using Clock = std::chrono::steady_clock;

constexpr int Patience = 60000; // ms

// Set by the benchmark of the whole clip; 0 before it has run.
double frameMemory = 0;
double processMemory = 0;

double secondsSince(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

/// Resident memory of the process in bytes.
double residentBytes()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    const double pages = file.readAll().split(' ').value(1).toDouble();
    return pages * static_cast<double>(::sysconf(_SC_PAGESIZE));
}

/// Relative to the minimum for the frames, at 32 bits per pixel.
void noteMemory(const HVVideoSource &source, double residentBefore)
{
    double bytes = 0;
    for (unsigned int index = 0; index < source.loadedFrameCount(); ++index)
        bytes += static_cast<double>(source.getFrame(index).sizeInBytes());
    const double needed =
            4.0 * BenchmarkClip::Width * BenchmarkClip::Height * BenchmarkClip::Frames;
    frameMemory = bytes / needed;
    processMemory = (residentBytes() - residentBefore) / needed;
}

/// From the request until the last frame is in the cache.
void cacheWholeClip(benchmark::State &state, const std::shared_ptr<BenchmarkClip> &clip)
{
    const QUrl url = QUrl::fromLocalFile(clip->path());
    for (auto _ : state) {
        const double resident = residentBytes();
        QSemaphore ended;
        HVVideoSourceFFMPEG source;
        QObject::connect(
                &source, &HVVideoSource::streamEnded, &source, [&ended] { ended.release(); },
                Qt::DirectConnection);
        source.start();
        const Clock::time_point start = Clock::now();
        source.setSource(url);
        const bool isEnded = ended.tryAcquire(1, Patience);
        state.SetIterationTime(secondsSince(start));
        if (!isEnded || source.loadedFrameCount() != BenchmarkClip::Frames)
            state.SkipWithError("wrong number of frames");
        if (frameMemory == 0)
            noteMemory(source, resident);
    }
}

/// The ffmpeg program, with as many decoder threads as the library uses.
void convertWithProgram(benchmark::State &state, const std::shared_ptr<BenchmarkClip> &clip,
                        const QStringList &extra)
{
    const QString threads = QString::number(qBound(1, QThread::idealThreadCount(), 4));
    const QStringList arguments = QStringList { QStringLiteral("-nostdin"),
                                                QStringLiteral("-v"),
                                                QStringLiteral("error"),
                                                QStringLiteral("-threads"),
                                                threads,
                                                QStringLiteral("-i"),
                                                clip->path() }
            + extra + QStringList { QStringLiteral("-pix_fmt"), QStringLiteral("bgra"),
                                    QStringLiteral("-f"),       QStringLiteral("rawvideo"),
                                    QStringLiteral("-y"),       QStringLiteral("/dev/null") };
    for (auto _ : state) {
        const Clock::time_point start = Clock::now();
        const int status = QProcess::execute(QStringLiteral("ffmpeg"), arguments);
        state.SetIterationTime(secondsSince(start));
        if (status != 0)
            state.SkipWithError("ffmpeg failed");
    }
}

/// From the request until the display is notified of the first frame.
void showFirstFrame(benchmark::State &state, const std::shared_ptr<BenchmarkClip> &clip)
{
    const QUrl url = QUrl::fromLocalFile(clip->path());
    for (auto _ : state) {
        QSemaphore displayed;
        HVVideoSourceFFMPEG source;
        // Deletes itself when its thread ends.
        auto *controller = new HVVideoController(&source, nullptr);
        QObject::connect(
                controller, &HVVideoController::displayFrame, controller,
                [&displayed] { displayed.release(); }, Qt::DirectConnection);
        controller->start();
        source.start();
        const Clock::time_point start = Clock::now();
        controller->setSource(url);
        const bool isDisplayed = displayed.tryAcquire(1, Patience);
        state.SetIterationTime(secondsSince(start));
        if (!isDisplayed)
            state.SkipWithError("no frame");
        controller->quit();
        source.quit();
        controller->wait();
    }
}

/// Opens the clip and decodes its first frame, without threads, requests and clocks.
void decodeFirstFrame(benchmark::State &state, const std::shared_ptr<BenchmarkClip> &clip)
{
    const QString path = clip->path();
    for (auto _ : state) {
        HVClip opened([] { return false; });
        const Clock::time_point start = Clock::now();
        const bool isOpen = !opened.open(path);
        const QImage frame = isOpen ? opened.nextFrame() : QImage();
        state.SetIterationTime(secondsSince(start));
        if (frame.isNull())
            state.SkipWithError("no frame");
    }
}

template <typename Run> void add(const std::string &name, Run run)
{
    benchmark::RegisterBenchmark(name.c_str(), run)->Unit(benchmark::kMillisecond)->UseManualTime();
}

} // namespace

void registerVideoBenchmarks(Comparisons &comparisons)
{
    const auto clip = std::make_shared<BenchmarkClip>();

    const std::string whole = "clip, 640 x 360, 300 frames/";
    add(whole + "Hovlets", [clip](benchmark::State &state) { cacheWholeClip(state, clip); });
    add(whole + "ffmpeg", [clip](benchmark::State &state) { convertWithProgram(state, clip, {}); });
    add(whole + "ffmpeg, one frame", [clip](benchmark::State &state) {
        convertWithProgram(state, clip, { QStringLiteral("-frames:v"), QStringLiteral("1") });
    });
    comparisons.add(whole + "Hovlets", { whole + "ffmpeg" }, 1.0);
    comparisons.addFigure("memory of its frames", "4 bytes a pixel", frameMemory, 1.02);
    comparisons.addFigure("memory of the process for it", "4 bytes a pixel", processMemory,
                          Comparisons::NoLimit);

    const std::string first = "clip, first frame/";
    add(first + "Hovlets", [clip](benchmark::State &state) { showFirstFrame(state, clip); });
    add(first + "decoding it", [clip](benchmark::State &state) { decodeFirstFrame(state, clip); });
    constexpr double MostDelay = 0.020; // s
    comparisons.addDelay(first + "Hovlets", first + "decoding it", MostDelay);

    registerFrameBenchmarks(comparisons, clip);
}
