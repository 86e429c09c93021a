// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QRect>
#include <QtCore/QString>

class QCoreApplication;

/// What the command line asks for.
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
    QString drawing;
};

/// Reads the command line; ends the program for --help and for mistakes.
Options readOptions(const QCoreApplication &application);
