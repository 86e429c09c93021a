// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ToolRun.h"

#include <QtCore/QFileInfo>
#include <QtCore/QJsonArray>

inline QStringList checkArguments(const char *format, const QString &path)
{
    return { QStringLiteral("check"), QStringLiteral("--format"), QLatin1String(format), path };
}

/// "CODE FILE-NAME:LINE" for each finding of a run with "--format json", or with ":COLUMN" added.
inline QStringList findingsOf(const ToolRun &run, bool withColumn = false)
{
    QStringList lines;
    const QJsonArray findings = run.json().value(QLatin1String("findings")).toArray();
    for (const auto &value : findings) {
        const QJsonObject finding = value.toObject();
        const QString name = QFileInfo(finding.value(QLatin1String("file")).toString()).fileName();
        lines += QStringLiteral("%1 %2:%3")
                         .arg(finding.value(QLatin1String("code")).toString(), name)
                         .arg(finding.value(QLatin1String("line")).toInt());
        if (withColumn)
            lines.last() +=
                    QStringLiteral(":%1").arg(finding.value(QLatin1String("column")).toInt());
    }
    if (run.status != (lines.isEmpty() ? 0 : 1))
        lines += QStringLiteral("status %1: ").arg(run.status) + QString::fromUtf8(run.error);
    return lines;
}

/// The same for a run of "hovlets check".
inline QStringList found(const QStringList &options, const QString &path)
{
    return findingsOf(ToolRun(checkArguments("json", path) + options));
}

/// The messages of "hovlets check", without files and remedies.
inline QStringList messages(const QString &path, const QStringList &options = {})
{
    const ToolRun run(checkArguments("json", path) + options);
    QStringList texts;
    const QJsonArray findings = run.json().value(QLatin1String("findings")).toArray();
    for (const auto &finding : findings)
        texts += finding.toObject().value(QLatin1String("message")).toString();
    return texts;
}

/// A control file with a user interface that exists.
inline QByteArray control(const QByteArray &entries, const QByteArray &attributes = {})
{
    return "<hovlets search=\"Default\" " + attributes + ">\n" + entries + "\n</hovlets>\n";
}
