// SPDX-License-Identifier: Apache-2.0
#include "AttachOptions.h"

#include <Hovlets/HVContext.h>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QSize>

namespace Hovlets {

namespace {

#define HV_NAMED(key) \
    { \
        QStringLiteral(#key), key \
    }

/// The settings that a file can name. Those that only code can use are missing.
const QMap<QString, int> &settingsByName()
{
    static const QMap<QString, int> names {
        HV_NAMED(HVKeyHideDelay),         HV_NAMED(HVKeyPopupIsWindow),
        HV_NAMED(HVKeyPackageSuffix),     HV_NAMED(HVKeyExtraComponentPath),
        HV_NAMED(HVKeyRichUiFile),        HV_NAMED(HVKeySimpleUiFile),
        HV_NAMED(HVKeyResourceFolder),    HV_NAMED(HVKeySafeMargin),
        HV_NAMED(HVKeyCursorOffset),      HV_NAMED(HVKeySimpleMode),
        HV_NAMED(HVKeyLinksEnabled),      HV_NAMED(HVKeyFallbackKey),
        HV_NAMED(HVKeyFallbackLocale),    HV_NAMED(HVKeyLocale),
        HV_NAMED(HVKeySuspended),         HV_NAMED(HVKeyAlwaysShowTooltips),
        HV_NAMED(HVKeyKeyDataFile),       HV_NAMED(HVKeyRequiredModifiers),
        HV_NAMED(HVKeyControlFolderName), HV_NAMED(HVKeyTranslationFolder),
        HV_NAMED(HVKeyShowFadeDuration),  HV_NAMED(HVKeyHideFadeDuration),
        HV_NAMED(HVKeyMessageLevel),      HV_NAMED(HVKeyTranslationName),
        HV_NAMED(HVKeyConfineContent),    HV_NAMED(HVKeyPlacement),
        HV_NAMED(HVKeySafePath),          HV_NAMED(HVKeySafePathDwell),
        HV_NAMED(HVKeyShowDelay),         HV_NAMED(HVKeyExpandDelay),
        HV_NAMED(HVKeyDismissOnKey),      HV_NAMED(HVKeyClipReleaseDelay),
    };
    return names;
}

#undef HV_NAMED

/// An array of two numbers is a size.
QVariant valueOf(const QJsonValue &value)
{
    const QJsonArray array = value.toArray();
    if (array.size() == 2)
        return QSize(array.at(0).toInt(), array.at(1).toInt());
    return value.toVariant();
}

QString pathIn(const QDir &folder, const QJsonValue &value)
{
    const QString path = value.toString();
    return path.isEmpty() ? path : QDir::cleanPath(folder.absoluteFilePath(path));
}

} // namespace

AttachOptions AttachOptions::read(const QString &file, QStringList &errors)
{
    AttachOptions options;
    QFile source(file);
    if (!source.open(QIODevice::ReadOnly)) {
        errors += QStringLiteral("%1 cannot be read: %2").arg(file, source.errorString());
        return options;
    }
    QJsonParseError mistake;
    const QJsonDocument document = QJsonDocument::fromJson(source.readAll(), &mistake);
    if (!document.isObject()) {
        errors += QStringLiteral("%1 is not a JSON object: %2").arg(file, mistake.errorString());
        return options;
    }
    const QDir folder = QFileInfo(file).absoluteDir();
    const QJsonObject object = document.object();
    for (auto each = object.begin(); each != object.end(); ++each) {
        if (each.key() == QLatin1String("dataPaths")) {
            const QJsonArray paths = each.value().toArray();
            for (const auto &path : paths)
                options.dataPaths += pathIn(folder, path);
        } else if (each.key() == QLatin1String("settings")) {
            const QJsonObject settings = each.value().toObject();
            for (auto setting = settings.begin(); setting != settings.end(); ++setting)
                options.settings.insert(setting.key(), valueOf(setting.value()));
        } else if (each.key() == QLatin1String("rules")) {
            options.rules = pathIn(folder, each.value());
        } else if (each.key() == QLatin1String("record")) {
            options.record = pathIn(folder, each.value());
        } else if (each.key() == QLatin1String("report")) {
            options.report = pathIn(folder, each.value());
        } else {
            errors += QStringLiteral("%1: unknown name \"%2\"").arg(file, each.key());
        }
    }
    return options;
}

void AttachOptions::applyTo(HVContext &context, QStringList &errors) const
{
    for (auto each = settings.begin(); each != settings.end(); ++each) {
        bool isNumber = false;
        const int number = each.key().toInt(&isNumber);
        if (!isNumber && !settingsByName().contains(each.key())) {
            errors += QStringLiteral("unknown setting \"%1\"").arg(each.key());
            continue;
        }
        context.set(isNumber ? number : settingsByName().value(each.key()), each.value());
    }
}

} // namespace Hovlets
