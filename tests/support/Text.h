// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QFile>
#include <QtCore/QString>

/// Shorthand for the many strings in tests, most of which are passed to Qt.
inline QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

/// The content of a UTF-8 file. The test cannot continue without it.
inline QString readText(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(path));
    return QString::fromUtf8(file.readAll());
}
