// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QFile>
#include <QtCore/QString>

/// Shorthand for tests that are full of strings, most of which become arguments of Qt's.
inline QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

/// The content of a UTF-8 file that the test cannot do without.
inline QString readText(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(path));
    return QString::fromUtf8(file.readAll());
}
