// SPDX-License-Identifier: Apache-2.0
#include "AttachOptions.h"
#include "AttachedHost.h"
#include "ControlInventory.h"
#include "Recorder.h"
#include "ScreenReport.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFileInfo>
#include <QtCore/QLocale>
#include <QtCore/QTimer>
#include <QtGui/QGenericPlugin>
#include <QtWidgets/QApplication>

#include <utility>

namespace Hovlets {

namespace {

constexpr const char *Variable = "HOVLETS_ATTACH";
constexpr const char *PluginsVariable = "QT_QPA_GENERIC_PLUGINS";

/// Programs that the application starts do not get the plug-in.
void hideFromChildren()
{
    qunsetenv(Variable);
    QList<QByteArray> plugins = qgetenv(PluginsVariable).split(',');
    plugins.removeAll("hovlets");
    if (plugins.isEmpty())
        qunsetenv(PluginsVariable);
    else
        qputenv(PluginsVariable, plugins.join(','));
}

/// Lives from the start of the application's event loop to its end. These are plain pointers
/// because an application may call exit() in its event loop: then nothing may be deleted, as Qt's
/// own static objects are gone when those of a plug-in are destroyed.
AttachedHost *attachedHost = nullptr;
Recorder *recorder = nullptr; // null unless the file asks for it
ScreenReport *report = nullptr; // the same
ControlInventory *inventory = nullptr; // the same

void detach()
{
    delete std::exchange(inventory, nullptr);
    delete std::exchange(report, nullptr);
    delete std::exchange(recorder, nullptr);
    delete std::exchange(attachedHost, nullptr);
}

/// Returns the folder of the author's package, whose entries win. Its file must exist when the
/// packages are indexed.
QString prepareRecording(const QString &package, const QString &locale, QStringList &errors)
{
    const QString failure = Recorder::fileIn(package, locale).create(locale);
    if (!failure.isEmpty())
        errors += failure;
    return QFileInfo(package).absolutePath();
}

void attach(const QString &file)
{
    if (attachedHost)
        return;
    if (!qobject_cast<QApplication *>(QCoreApplication::instance())) {
        printMessage(QStringLiteral("the program has no QApplication, but hovlets need widgets"));
        return;
    }
    QStringList errors;
    AttachOptions options = AttachOptions::read(file, errors);
    HVContext settings;
    useRecommendedSettings(settings);
    if (QLocale().language() != QLocale::C)
        settings.set(HVKeyLocale, QLocale().name());
    options.applyTo(settings, errors);
    settings.set(HVKeyTrackHover, true);
    const QString locale = settings.get(HVKeyLocale).toString();
    if (!options.record.isEmpty()) {
        const QString folder = prepareRecording(options.record, locale, errors);
        options.dataPaths.removeAll(folder);
        options.dataPaths += folder;
        settings.set(HVKeyAlwaysShowTooltips, true); // the author's window may be the active one
    }
    for (const QString &path : std::as_const(options.dataPaths)) {
        if (!QFileInfo(path).isDir())
            errors += QStringLiteral("%1 is not a folder").arg(path);
    }
    for (const QString &error : std::as_const(errors))
        printMessage(error);
    attachedHost = new AttachedHost(settings, options.dataPaths, options.rules);
    if (!options.record.isEmpty()) {
        recorder = new Recorder(*attachedHost, Recorder::fileIn(options.record, locale));
        recorder->show();
    }
    if (!options.report.isEmpty())
        report = new ScreenReport(*attachedHost, options.report);
    if (!options.inventory.isEmpty())
        inventory = new ControlInventory(*attachedHost, options.inventory);
    QObject::connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, &detach);
    qAddPostRoutine(&detach); // for programs that leave without an event loop
}

} // namespace

/// Qt creates it if the environment asks for the generic plug-in "hovlets".
class HovletsPlugin : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "hovlets.json")

public:
    /// Qt calls it while the application object is being constructed. The result does nothing, and
    /// belongs to Qt; null would make Qt write a warning.
    QObject *create(const QString &, const QString &) override
    {
        auto *starter = new QObject;
        const QString file = qEnvironmentVariable(Variable);
        if (file.isEmpty())
            return starter;
        hideFromChildren();
        // When the events of this timer are handled, the application is complete.
        QTimer::singleShot(0, starter, [file] { attach(file); });
        return starter;
    }
};

} // namespace Hovlets

#include "HovletsPlugin.moc"
