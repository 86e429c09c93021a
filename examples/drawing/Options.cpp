// SPDX-License-Identifier: Apache-2.0
#include "Options.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QCoreApplication>
#include <QtCore/QRegularExpression>

namespace {

QRect readGeometry(const QString &text)
{
    static const QRegularExpression pattern(QStringLiteral("^(\\d+)x(\\d+)\\+(\\d+)\\+(\\d+)$"));
    const QRegularExpressionMatch match = pattern.match(text);
    if (!match.hasMatch())
        return {};
    const auto number = [&match](int group) { return match.captured(group).toInt(); };
    return { number(3), number(4), number(1), number(2) };
}

} // namespace

Options readOptions(const QCoreApplication &application)
{
    const QCommandLineOption locale(
            QStringLiteral("locale"),
            QStringLiteral("Language of the popups: en_US (the default) or de_DE."),
            QStringLiteral("name"), Options().locale);
    const QCommandLineOption dark(QStringLiteral("dark"), QStringLiteral("Start in dark colours."));
    const QCommandLineOption simple(QStringLiteral("simple"),
                                    QStringLiteral("Show the simple popups; F1 shows more."));
    const QCommandLineOption verbose(QStringLiteral("verbose"),
                                     QStringLiteral("Print every message of the library."));
    const QCommandLineOption geometry(QStringLiteral("geometry"),
                                      QStringLiteral("Size and place of the window."),
                                      QStringLiteral("WxH+X+Y"));
    const QCommandLineOption controls(
            QStringLiteral("print-controls"),
            QStringLiteral("For tests: keep in this file a line \"key x y\" for each control that "
                           "is visible, with its centre on the screen."),
            QStringLiteral("file"));

    const QCommandLineOption coverage(
            QStringLiteral("coverage"),
            QStringLiteral("At the end, write a report of the controls without a hovlet."),
            QStringLiteral("file"));
    const QCommandLineOption overlay(
            QStringLiteral("coverage-overlay"),
            QStringLiteral("Outline the controls: green with a hovlet, red without."));

    const QCommandLineOption pinned(
            QStringLiteral("pinned"),
            QStringLiteral("Keep the pinned popups in this file from one run to the next."),
            QStringLiteral("file"));

    QCommandLineParser parser;
    parser.setApplicationDescription(
            QStringLiteral("A small drawing program with hovlets on its controls."));
    parser.addHelpOption();
    parser.addOptions(
            { locale, dark, simple, verbose, geometry, controls, coverage, overlay, pinned });
    parser.addPositionalArgument(QStringLiteral("drawing"), QStringLiteral("A picture to open."),
                                 QStringLiteral("[drawing]"));
    parser.process(application);

    Options options;
    options.locale = parser.value(locale);
    options.dark = parser.isSet(dark);
    options.simple = parser.isSet(simple);
    options.verbose = parser.isSet(verbose);
    options.geometry = readGeometry(parser.value(geometry));
    options.controlsFile = parser.value(controls);
    options.coverageFile = parser.value(coverage);
    options.coverageOverlay = parser.isSet(overlay);
    options.pinnedFile = parser.value(pinned);
    options.drawing = parser.positionalArguments().value(0);
    if (parser.isSet(geometry) && options.geometry.isNull()) {
        qCritical("--geometry wants WxH+X+Y, such as 900x600+40+40");
        std::exit(2);
    }
    return options;
}
