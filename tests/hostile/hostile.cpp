// SPDX-License-Identifier: Apache-2.0
// Shows hostile packages, each in a separate process with limited memory, and prints the results:
//
//   hostile            all of them
//   hostile WORD       those whose corpus or name contains the word, one line for each
//
// Exits with 1 if one crashed the process, did not end, held the GUI thread for more than 200 ms,
// or took more memory than 256 MB, the size of the package and the decoded frames of its clips.
// These frames have a limit of their own, HVLimits::clipMemory, which is larger because it applies
// to all clips of the process. The table lists them separately.
#include "HostileInputs.h"
#include "MemoryPeak.h"
#include "RecordingHost.h"
#include "TestMain.h"
#include "ThreadTime.h"

#include "HVFrameMemory.h"
#include "HVView.h"
#include "HVWidget.h"

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QMap>
#include <QtCore/QProcess>
#include <QtQuick/QQuickItem>
#include <QtWidgets/QApplication>

#include <cstdio>
#include <malloc.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

using namespace Hovlets;

namespace {

constexpr int MostTime = 200; // ms of the GUI thread, in one go
constexpr qint64 MostMemory = 256; // MB beyond the package and the decoded frames of its clips
constexpr int LargeBlock = 256 * 1024; // bytes
constexpr qint64 MemoryOfProcess = qint64 { 4 } * 1024 * 1024 * 1024;
constexpr int HangsAfter = 30000; // ms
constexpr int Shown = 500; // ms that the popup is on screen

QList<HostileInput> allInputs()
{
    return hostileDocuments() + hostileTexts() + hostileFiles() + hostileClips();
}

qint64 sizeOf(const QString &path)
{
    qint64 size = 0;
    const QFileInfoList files =
            QDir(path).entryInfoList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
    for (const QFileInfo &file : files) {
        if (!file.isSymLink())
            size += file.isDir() ? sizeOf(file.filePath()) : file.size();
    }
    return size;
}

/// The longest time that the GUI thread worked, or waited, without returning to its event loop.
class Slowest
{
public:
    template <typename Step> void measure(Step step)
    {
        const ThreadTime time;
        QElapsedTimer timer;
        timer.start();
        step();
        m_work = qMax(m_work, int(time.elapsed()));
        m_wall = qMax(m_wall, int(timer.elapsed()));
    }

    int work() const { return m_work; }
    int wall() const { return m_wall; }

private:
    int m_work = 0;
    int m_wall = 0;
};

/// Lets the popup live for a while. Returns the most memory that decoded frames took, in bytes.
qint64 live(Slowest &slowest, int milliseconds)
{
    qint64 frames = 0;
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < milliseconds) {
        slowest.measure([] {
            QCoreApplication::processEvents();
            // Happens by itself only in exec().
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        });
        QThread::msleep(2);
        frames = qMax(frames, HVFrameMemory::used());
    }
    return frames;
}

/// Runs in a child, for one input. Prints "work wall memory size frames", in ms and MB.
int attack(const HostileInput &input)
{
    PackageFolder harmless;
    harmless.addControlFile(QStringLiteral("Good"), QStringLiteral("good"),
                            "<hovlets search=\"Default\"><hovlet key=\"good\" title=\"t\">"
                            "<p>x</p></hovlet></hovlets>");
    PackageFolder folder;
    const HostilePackage package(folder);
    input.make(package);
    const qint64 size = sizeOf(folder.path());

    HVContext settings;
    settings.set(HVKeyHideDelay, 0);
    settings.set(HVKeyMessageLevel, HVMessageWarning);
    // The cost of the first popup does not count.
    auto host = std::make_unique<RecordingHost>(
            settings, QStringList { harmless.path(), QStringLiteral(HOVLETS_PACKAGES) });
    Slowest ignored;
    const auto show = [&](const char *key) {
        host->manager()->show(QString::fromLatin1(key), QPoint(10, 10), nullptr);
    };
    show("good");
    live(ignored, 200);
    if (!host->view() || !host->view()->rootObject()) {
        std::fprintf(stderr, "hostile: the default user interface does not show\n");
        return 3;
    }

    const MemoryPeak peak;
    qint64 frames = 0;
    Slowest slowest;
    slowest.measure([&] { host->manager()->loadDataPath({ folder.path() }); });
    if (input.change)
        input.change(package);
    for (const char *key : { "attack", "good", "attack" }) {
        slowest.measure([&] { show(key); });
        frames = qMax(frames, live(slowest, key[0] == 'a' ? Shown : 100));
    }
    slowest.measure([&] { host.reset(); });
    live(slowest, 100);
    const auto megabytes = [](qint64 bytes) { return static_cast<long long>(bytes >> 20); };
    std::printf("%d %d %lld %lld %lld\n", slowest.work(), slowest.wall(), megabytes(peak.bytes()),
                megabytes(size), megabytes(frames));
    return 0;
}

int runChild(int argc, char **argv, const QByteArray &name)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    qputenv("XDG_RUNTIME_DIR", QDir::tempPath().toLocal8Bit());
    const rlimit limit { MemoryOfProcess, MemoryOfProcess };
    ::setrlimit(RLIMIT_AS, &limit);
    const rlimit noCore { 0, 0 };
    ::setrlimit(RLIMIT_CORE, &noCore);
    // Returns large blocks to the system when they are freed. Otherwise, the allocator keeps up to
    // 64 MB of them for each thread, and how much depends on the moment.
    ::mallopt(M_MMAP_THRESHOLD, LargeBlock);
    const QApplication application(argc, argv);
    filterTestLog();
    for (const HostileInput &input : allInputs()) {
        if (input.corpus + (": " + input.name) == name)
            return attack(input);
    }
    return 2;
}

struct Row
{
    int inputs = 0;
    int crashes = 0;
    int hangs = 0;
    int beyond = 0; // more time or memory than promised
    int work = 0;
    int wall = 0;
    qint64 memory = 0; // MB beyond the package and the decoded frames
    qint64 frames = 0; // MB
};

void report(const QByteArray &name, const char *what, const QByteArray &figures)
{
    std::printf("  %-9s %s %s\n", what, name.constData(), figures.trimmed().constData());
    std::fflush(stdout);
}

void attackWith(const QByteArray &name, Row &row, bool verbose)
{
    QProcess child;
    child.setProcessChannelMode(verbose ? QProcess::ForwardedErrorChannel
                                        : QProcess::SeparateChannels);
    child.start(QCoreApplication::applicationFilePath(),
                { QStringLiteral("--input"), QString::fromUtf8(name) });
    ++row.inputs;
    if (!child.waitForFinished(HangsAfter)) {
        child.kill();
        child.waitForFinished();
        ++row.hangs;
        report(name, "hang", {});
        return;
    }
    const QByteArray figures = child.readAllStandardOutput();
    if (child.exitStatus() != QProcess::NormalExit || child.exitCode() != 0) {
        ++row.crashes;
        report(name, "crash", QByteArray::number(child.exitCode()));
        return;
    }
    const QList<QByteArray> values = figures.trimmed().split(' ');
    const int work = values.value(0).toInt();
    const qint64 frames = values.value(4).toLongLong();
    const qint64 memory = values.value(2).toLongLong() - values.value(3).toLongLong() - frames;
    row.work = qMax(row.work, work);
    row.wall = qMax(row.wall, values.value(1).toInt());
    row.memory = qMax(row.memory, memory);
    row.frames = qMax(row.frames, frames);
    const bool isBeyond = work > MostTime || memory > MostMemory;
    row.beyond += isBeyond;
    if (isBeyond || verbose)
        report(name, isBeyond ? "beyond" : "served", figures);
}

} // namespace

int main(int argc, char **argv)
{
    if (argc == 3 && qstrcmp(argv[1], "--input") == 0)
        return runChild(argc, argv, argv[2]);

    const QCoreApplication application(argc, argv);
    const QByteArray wanted = argc > 1 ? argv[1] : "";
    QMap<QByteArray, Row> rows;
    for (const HostileInput &input : allInputs()) {
        const QByteArray name = input.corpus + (": " + input.name);
        if (name.contains(wanted))
            attackWith(name, rows[input.corpus], !wanted.isEmpty());
    }
    std::printf("%-14s %7s %8s %6s %7s %9s %9s %10s %10s\n", "corpus", "inputs", "crashes", "hangs",
                "beyond", "GUI ms", "wall ms", "memory MB", "frames MB");
    bool isGood = !rows.isEmpty();
    for (auto row = rows.cbegin(); row != rows.cend(); ++row) {
        std::printf("%-14s %7d %8d %6d %7d %9d %9d %10lld %10lld\n", row.key().constData(),
                    row->inputs, row->crashes, row->hangs, row->beyond, row->work, row->wall,
                    static_cast<long long>(row->memory), static_cast<long long>(row->frames));
        isGood = isGood && row->crashes + row->hangs + row->beyond == 0;
    }
    return isGood ? 0 : 1;
}

// What inputs write.

QString HostilePackage::path(const QString &name) const
{
    return m_folder.path() + QStringLiteral("/Bad.hovlets/") + name;
}

void HostilePackage::write(const QString &name, const QByteArray &bytes) const
{
    m_folder.add(QStringLiteral("Bad.hovlets/") + name, bytes);
}

void HostilePackage::control(const QByteArray &file) const
{
    write(QStringLiteral("Control/attack.xml"), file);
}

void HostilePackage::entry(const QByteArray &attributes, const QByteArray &children,
                           const QByteArray &prolog) const
{
    control(prolog + "<hovlets search=\"Default\"><hovlet key=\"attack\" " + attributes + ">"
            + children + "</hovlet></hovlets>");
}

void HostilePackage::clear(const QString &name) const
{
    QFile::remove(path(name));
}

void HostilePackage::pipe(const QString &name) const
{
    clear(name);
    ::mkfifo(QFile::encodeName(path(name)).constData(), 0600);
}

void HostilePackage::socket(const QString &name) const
{
    clear(name);
    const QByteArray file = QFile::encodeName(path(name));
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    qstrncpy(address.sun_path, file.constData(), sizeof address.sun_path);
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (descriptor < 0
        || ::bind(descriptor, reinterpret_cast<sockaddr *>(&address), sizeof address) != 0)
        qFatal("cannot make a socket");
}

void HostilePackage::folder(const QString &name) const
{
    clear(name);
    QDir().mkpath(path(name));
}

void HostilePackage::link(const QString &target, const QString &name) const
{
    clear(name);
    QFile::link(target, path(name));
}
