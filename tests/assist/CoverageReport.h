// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Text.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>
#include <QtCore/QStringList>

// Reads the reports of HVCoverage.

/// The item with \a key in one of the report's lists; empty if there is none.
inline QJsonObject find(const QJsonObject &report, const char *list, const QString &key)
{
    const QJsonArray items = report[text(list)].toArray();
    for (const auto &item : items) {
        if (item.toObject()[text("key")].toString() == key)
            return item.toObject();
    }
    return {};
}

inline QJsonObject control(const QJsonObject &report, const char *key)
{
    return find(report, "controls", text(key));
}

inline int total(const QJsonObject &report, const char *name)
{
    return report[text("totals")].toObject()[text(name)].toInt(-1);
}

inline QStringList controlKeys(const QJsonObject &report)
{
    QStringList keys;
    const QJsonArray controls = report[text("controls")].toArray();
    for (const auto &item : controls)
        keys += item.toObject()[text("key")].toString();
    keys.sort();
    return keys;
}
