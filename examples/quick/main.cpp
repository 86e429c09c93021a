// SPDX-License-Identifier: Apache-2.0
#include <Hovlets/HVContext.h>
#include <Hovlets/HVInterface.h>

#include <QtCore/QUrl>
#include <QtQml/QQmlApplicationEngine>
#include <QtWidgets/QApplication>

/// A program whose window is written in QML. Main.qml says which item has which content.
int main(int argc, char **argv)
{
    QApplication application(argc, argv); // not a QGuiApplication: popups are widgets

    HVContext settings;
    Hovlets::useRecommendedSettings(settings);
    const QString folder = QStringLiteral(QUICK_FOLDER);
    Hovlets::HVInterface hovlets(
            settings, { QStringLiteral(DEFAULT_PACKAGES), folder + QStringLiteral("/content") });

    QQmlApplicationEngine engine;
    engine.addImportPath(QStringLiteral(HOVLETS_IMPORTS));
    engine.load(QUrl::fromLocalFile(folder + QStringLiteral("/Main.qml")));
    return engine.rootObjects().isEmpty() ? 1 : QApplication::exec();
}
