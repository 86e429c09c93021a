// SPDX-License-Identifier: Apache-2.0
#include "Comparisons.h"
#include "GeneratedContent.h"
#include "HVContext.h"
#include "HVIndex.h"
#include "HVInterface.h"
#include "HVManager.h"
#include "HVView.h"
#include "HVWidget.h"
#include "HVXmlElement.h"
#include "Suites.h"
#include "ToolTipPeer.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEventLoop>
#include <QtCore/QFileInfo>
#include <QtCore/QTimer>
#include <QtQuick/QQuickWindow>
#include <QtWidgets/QWidget>

#include <ctime>
#include <memory>

namespace {

constexpr QPoint Position(100, 100);

double seconds(clockid_t clock)
{
    timespec time = {};
    ::clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

/// Runs the event loop until the view has rendered its next frame: the time that a user waits.
bool waitForFrame(QQuickWidget &view)
{
    constexpr int Patience = 10000;
    bool rendered = false;
    QEventLoop loop;
    QTimer::singleShot(Patience, &loop, &QEventLoop::quit);
    QObject::connect(view.quickWindow(), &QQuickWindow::afterRendering, &loop, [&] {
        rendered = true;
        loop.quit();
    });
    loop.exec();
    return rendered;
}

/// Renders immediately, without Qt's pause before a frame: the work alone.
bool drawAtOnce(QQuickWidget &view)
{
    return !view.grabFramebuffer().isNull();
}

using TakePicture = bool (*)(QQuickWidget &view);

/// A package with a control file of a few entries, and the user interface that shows them.
class Package
{
public:
    /// The user interface of the package in \a folder.
    static std::shared_ptr<Package> with(const QString &folder)
    {
        auto package = std::make_shared<Package>();
        package->m_components = folder;
        return package;
    }

    /// The default user interface.
    Package()
        : m_content(1, FileSize, 1)
        , m_components(QStringLiteral(HOVLETS_PACKAGES "/Default.hovlets"))
    {
    }

    explicit Package(const QByteArray &userInterface)
        : m_content(1, FileSize, 1)
        , m_components(folder())
    {
        GeneratedContent::write(m_components + UserInterface, userInterface);
    }

    QStringList dataPaths() const { return { m_content.path() }; }
    QString folder() const { return m_content.packageFolder(0); }
    QString controlFile() const { return m_content.files().constFirst(); }

    /// The folder with the user interface.
    QString components() const { return m_components; }
    QUrl userInterface() const { return QUrl::fromLocalFile(m_components + UserInterface); }

    static QString key(int entry) { return GeneratedContent::key(0, entry); }

private:
    static constexpr int FileSize = 3000;
    static constexpr QLatin1String UserInterface = QLatin1String("/ui/HovletsUI.qml");

    GeneratedContent m_content;
    QString m_components;
};

/// The library with a package, before the first popup.
class Library
{
public:
    explicit Library(
            const Package &package, void (*configure)(HVContext &) = [](HVContext &) { /* none */ })
        : m_host(m_context, {})
        , m_manager(std::make_unique<Hovlets::HVManager>(&m_host, settings(package, configure),
                                                         package.dataPaths(), nullptr))
    {
    }

    ~Library()
    {
        m_manager.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    bool show(int entry, TakePicture take)
    {
        return m_manager->show(Package::key(entry), Position, control)
                && take(*m_manager->widget()->view());
    }

protected:
    QWidget *control = nullptr; // what the popup is for

private:
    HVContext &settings(const Package &package, void (*configure)(HVContext &))
    {
        configure(m_context);
        m_context.set(Hovlets::HVKeyHideDelay, 0);
        m_context.set(Hovlets::HVKeyExtraComponentPath, package.components());
        return m_context;
    }

    HVContext m_context;
    Hovlets::HVInterface m_host;
    std::unique_ptr<Hovlets::HVManager> m_manager;
};

/// The library with the recommended settings, and a control beside which the popup goes.
class RecommendedLibrary : public Library
{
public:
    explicit RecommendedLibrary(const Package &package)
        : Library(package, Hovlets::useRecommendedSettings)
    {
        m_control.setGeometry(Position.x(), Position.y(), 40, 30);
        m_control.show();
        control = &m_control;
    }

private:
    QWidget m_control;
};

/// A bare tooltip for the same package. Its content is parsed before the measurement starts.
class Bare
{
public:
    explicit Bare(const Package &package)
        : m_package(package)
        , m_index(&m_context, {})
    {
        for (int entry = 0; entry < 2; ++entry) {
            Hovlets::HVXmlElement *root = nullptr;
            m_entries[entry] = m_index.load(Package::key(entry), package.controlFile(),
                                            QLocale(QStringLiteral("en_US")), root);
            m_roots[entry].reset(root);
        }
    }

    ~Bare() { m_popup.reset(); }

    bool show(int entry, TakePicture take)
    {
        if (!m_popup)
            m_popup = std::make_unique<ToolTipPeer>();
        m_popup->show(m_entries[entry], m_package.folder(), m_package.userInterface(), Position);
        return take(*m_popup);
    }

private:
    const Package &m_package;
    HVContext m_context;
    Hovlets::HVIndex m_index;
    Hovlets::HVXmlElement *m_entries[2] = {};
    std::unique_ptr<Hovlets::HVXmlElement> m_roots[2];
    std::unique_ptr<ToolTipPeer> m_popup;
};

/// Sets the time from a look-up to the first rendered frame. Where nothing waits, it is the
/// processor time of all threads, on which other programs have less effect.
template <typename Popup>
void timeShow(benchmark::State &state, Popup &popup, int entry, TakePicture take)
{
    const clockid_t clock = take == drawAtOnce ? CLOCK_PROCESS_CPUTIME_ID : CLOCK_MONOTONIC;
    const double start = seconds(clock);
    const bool shown = popup.show(entry, take);
    state.SetIterationTime(seconds(clock) - start);
    if (!shown)
        state.SkipWithError("no picture");
}

/// From a look-up to the first rendered frame, starting with nothing but the index.
template <typename Popup>
void showCold(benchmark::State &state, const Package &package, TakePicture take)
{
    for (auto _ : state) {
        Popup popup(package);
        timeShow(state, popup, 0, take);
    }
}

/// The same in a popup that already shows something else.
template <typename Popup>
void showWarm(benchmark::State &state, const Package &package, TakePicture take)
{
    Popup popup(package);
    int entry = 0;
    popup.show(entry, waitForFrame);
    for (auto _ : state) {
        entry = 1 - entry;
        timeShow(state, popup, entry, take);
    }
}

using Measure = void (*)(benchmark::State &, const Package &, TakePicture);

void registerPair(Comparisons &comparisons, const std::string &prefix, Measure library,
                  Measure bare, TakePicture take, const std::shared_ptr<Package> &package)
{
    const auto add = [&](const std::string &name, Measure measure) {
        benchmark::RegisterBenchmark(name.c_str(),
                                     [measure, take, package](benchmark::State &state) {
                                         measure(state, *package, take);
                                     })
                ->Unit(benchmark::kMillisecond)
                ->UseManualTime();
        return name;
    };
    const std::string ours = add(prefix + "/Hovlets", library);
    comparisons.add(ours, { add(prefix + "/bare QQuickWidget", bare) }, 1.2);
}

/// Compares a hover until the first frame with the recommended settings and with the defaults.
void registerRecommended(Comparisons &comparisons, const std::shared_ptr<Package> &package)
{
    const std::pair<const char *, std::pair<Measure, Measure>> shows[] = {
        { "cold show, recommended settings", { showCold<RecommendedLibrary>, showCold<Library> } },
        { "warm show, recommended settings", { showWarm<RecommendedLibrary>, showWarm<Library> } },
    };
    for (const auto &[name, measures] : shows) {
        const auto add = [&](const std::string &row, Measure measure) {
            benchmark::RegisterBenchmark(row.c_str(),
                                         [measure = measure, package](benchmark::State &state) {
                                             measure(state, *package, drawAtOnce);
                                         })
                    ->Unit(benchmark::kMillisecond)
                    ->UseManualTime();
            return row;
        };
        const std::string ours = add(std::string(name) + "/Hovlets", measures.first);
        comparisons.add(ours, { add(std::string(name) + "/defaults", measures.second) }, 1.1);
    }
}

/// Compares the default user interface with that of the package in \a folder.
void registerOther(Comparisons &comparisons, const QString &folder)
{
    const std::pair<const char *, Measure> shows[] = {
        { "cold show, default QML, ", showCold<Library> },
        { "warm show, default QML, ", showWarm<Library> },
        { "cold show, recommended settings, ", showCold<RecommendedLibrary> },
        { "warm show, recommended settings, ", showWarm<RecommendedLibrary> },
    };
    const auto ours = std::make_shared<Package>();
    const auto other = Package::with(folder);
    for (const auto &[name, measure] : shows) {
        const auto add = [measure = measure](const std::string &row,
                                             const std::shared_ptr<Package> &package) {
            benchmark::RegisterBenchmark(row.c_str(),
                                         [measure, package](benchmark::State &state) {
                                             measure(state, *package, drawAtOnce);
                                         })
                    ->Unit(benchmark::kMillisecond)
                    ->UseManualTime();
            return row;
        };
        const std::string group = std::string(name) + "old/";
        comparisons.add(add(group + "Hovlets", ours), { add(group + "old QML", other) }, 1.15);
    }
}

void registerFor(Comparisons &comparisons, const std::string &name,
                 const std::shared_ptr<Package> &package)
{
    const std::pair<const char *, TakePicture> ends[] = {
        { ", next frame", waitForFrame },
        { ", drawn at once", drawAtOnce },
    };
    for (const auto &[end, take] : ends) {
        registerPair(comparisons, "cold show, " + name + end, showCold<Library>, showCold<Bare>,
                     take, package);
        registerPair(comparisons, "warm show, " + name + end, showWarm<Library>, showWarm<Bare>,
                     take, package);
    }
}

constexpr auto SmallUserInterface = R"(import QtQuick 2.15

Rectangle {
    width: 400
    height: column.height + 20
    color: hovletTheme.base
    border.color: hovletTheme.text

    Column {
        id: column
        x: 10
        y: 10
        width: parent.width - 20
        spacing: 6

        Text {
            width: parent.width
            text: hovlet.attribute("title")
            color: hovletTheme.text
            font.bold: true
            wrapMode: Text.Wrap
        }
        Text {
            width: parent.width
            text: hovlet.childElement("text").content
            color: hovletTheme.text
            wrapMode: Text.Wrap
        }
    }
}
)";

} // namespace

void registerShowBenchmarks(Comparisons &comparisons)
{
    registerFor(comparisons, "small QML", std::make_shared<Package>(SmallUserInterface));
    registerFor(comparisons, "default QML", std::make_shared<Package>());
    registerRecommended(comparisons, std::make_shared<Package>());
    const QString other = qEnvironmentVariable("HOVLETS_BENCH_OLD_UI");
    if (!other.isEmpty())
        registerOther(comparisons, other);
}
