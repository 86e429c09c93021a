// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QRect>
#include <QtCore/QString>

class QCoreApplication;

/// The options on the command line.
struct Options
{
    QString locale = QStringLiteral("en_US");
    bool dark = false;
    bool simple = false;
    bool verbose = false;
    QRect geometry; // null: Qt's choice
    QString controlsFile;
    QString coverageFile;
    bool coverageOverlay = false;
    QString pinnedFile;
    QString drawing;
};

/// Parses the command line. Exits for --help and after an error.
Options readOptions(const QCoreApplication &application);
