// SPDX-License-Identifier: Apache-2.0
#include "ControlsFile.h"
#include "DrawingHost.h"
#include "HelpWindow.h"
#include "MainWindow.h"
#include "Options.h"
#include "PinnedFile.h"
#include "Theme.h"

#include <Hovlets/HVContext.h>
#include <HovletsAssist/HVCoverage.h>
#include <HovletsAssist/HVKeyboardAccess.h>

#include <QtWidgets/QApplication>

#include <memory>
#include <optional>

namespace {

HVContext settingsFor(const Options &options)
{
    using namespace Hovlets;
    HVContext settings;
    useRecommendedSettings(settings);
    settings.set(HVKeyLocale, options.locale);
    settings.set(HVKeyFallbackLocale, QStringLiteral("en_US"));
    settings.set(HVKeySimpleMode, options.simple);
    if (options.simple)
        settings.set(HVKeyExpandKey, QStringLiteral("F1"));
    settings.set(HVKeyHideDelay, 1500); // ms
    settings.set(HVKeyShowFadeDuration, 120); // ms
    settings.set(HVKeyHideFadeDuration, 200); // ms
    settings.set(HVKeyDocumentationEnabled, true);
    settings.set(HVKeyKeyDataFile, QStringLiteral(DRAWING_PACKAGES "/keys.xml"));
    settings.set(HVKeyMessageLevel, options.verbose ? HVMessageDebug : HVMessageWarning);
    return settings;
}

/// For authors of hovlets, and therefore only on demand.
std::unique_ptr<Hovlets::HVCoverage> coverageFor(const Options &options, DrawingHost &host)
{
    if (options.coverageFile.isEmpty() && !options.coverageOverlay)
        return nullptr;
    Hovlets::HVCoverageSettings settings;
    settings.reportFile = options.coverageFile;
    settings.overlay = options.coverageOverlay;
    return std::make_unique<Hovlets::HVCoverage>(host, settings);
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("drawing"));
    QApplication::setApplicationDisplayName(QStringLiteral("Drawing"));
    QApplication::setApplicationVersion(QStringLiteral("1.2"));
    const Options options = readOptions(application);
    applyTheme(options.dark);

    HVContext settings = settingsFor(options);
    HelpWindow help;
    DrawingHost host(settings,
                     { QStringLiteral(DEFAULT_PACKAGES), QStringLiteral(DRAWING_PACKAGES) }, help);
    host.setGlobalProperty(QStringLiteral("application"), QApplication::applicationDisplayName());

    Hovlets::HVKeyboardAccess keyboard(host);
    const auto coverage = coverageFor(options, host);

    MainWindow window(host, help, keyboard, options.dark);
    if (!options.drawing.isEmpty())
        window.openFile(options.drawing);
    if (!options.geometry.isNull()) {
        window.move(options.geometry.topLeft());
        window.resize(options.geometry.size());
    }
    window.show();

    std::optional<PinnedFile> pinned;
    if (!options.pinnedFile.isEmpty())
        pinned.emplace(host, window, options.pinnedFile);
    std::optional<ControlsFile> controls;
    if (!options.controlsFile.isEmpty())
        controls.emplace(host, window, options.controlsFile);
    return application.exec();
}
