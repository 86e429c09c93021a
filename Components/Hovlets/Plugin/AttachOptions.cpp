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

// Versions of clang-format differ here.
// clang-format off
#define HV_NAMED(key) { QStringLiteral(#key), key }
// clang-format on

/// The settings that a file can name. Those that only code can use are missing.
const QMap<QString, int> &settingsByName()
{
    static const QMap<QString, int> names {
        HV_NAMED(HVKeyHideDelay),
        HV_NAMED(HVKeyPopupIsWindow),
        HV_NAMED(HVKeyPackageSuffix),
        HV_NAMED(HVKeyExtraComponentPath),
        HV_NAMED(HVKeyRichUiFile),
        HV_NAMED(HVKeySimpleUiFile),
        HV_NAMED(HVKeyResourceFolder),
        HV_NAMED(HVKeySafeMargin),
        HV_NAMED(HVKeyCursorOffset),
        HV_NAMED(HVKeySimpleMode),
        HV_NAMED(HVKeyLinksEnabled),
        HV_NAMED(HVKeyFallbackKey),
        HV_NAMED(HVKeyFallbackLocale),
        HV_NAMED(HVKeyLocale),
        HV_NAMED(HVKeySuspended),
        HV_NAMED(HVKeyAlwaysShowTooltips),
        HV_NAMED(HVKeyKeyDataFile),
        HV_NAMED(HVKeyRequiredModifiers),
        HV_NAMED(HVKeyControlFolderName),
        HV_NAMED(HVKeyTranslationFolder),
        HV_NAMED(HVKeyShowFadeDuration),
        HV_NAMED(HVKeyHideFadeDuration),
        HV_NAMED(HVKeyMessageLevel),
        HV_NAMED(HVKeyTranslationName),
        HV_NAMED(HVKeyConfineContent),
        HV_NAMED(HVKeyLanguageFallback),
        HV_NAMED(HVKeyPlacement),
        HV_NAMED(HVKeySafePath),
        HV_NAMED(HVKeySafePathDwell),
        HV_NAMED(HVKeyShowDelay),
        HV_NAMED(HVKeyExpandDelay),
        HV_NAMED(HVKeyExpandKey),
        HV_NAMED(HVKeyDismissOnKey),
        HV_NAMED(HVKeyClipReleaseDelay),
        HV_NAMED(HVKeyShowOwnTips),
        HV_NAMED(HVKeyPinnedInTaskbar),
        HV_NAMED(HVKeyWarmUp),
        HV_NAMED(HVKeyExactToolTipColors),
        HV_NAMED(HVKeySurface),
        HV_NAMED(HVKeyOwnTitleBar),
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

/// The member for a path by its name in the file; null if the name has none.
QString AttachOptions::*pathByName(const QString &name)
{
    if (name == QLatin1String("rules"))
        return &AttachOptions::rules;
    if (name == QLatin1String("record"))
        return &AttachOptions::record;
    if (name == QLatin1String("inventory"))
        return &AttachOptions::inventory;
    return name == QLatin1String("report") ? &AttachOptions::report : nullptr;
}

/// Takes what is usable of a value. Returns the mistake in it; empty if there is none.
QString readValue(AttachOptions &options, const QDir &folder, const QString &name,
                  const QJsonValue &value)
{
    if (name == QLatin1String("dataPaths")) {
        bool isMistaken = !value.isArray();
        const QJsonArray paths = value.toArray();
        for (const auto &path : paths) {
            if (path.isString())
                options.dataPaths += pathIn(folder, path);
            else
                isMistaken = true;
        }
        return isMistaken ? QStringLiteral("\"dataPaths\" is not an array of strings") : QString();
    }
    if (name == QLatin1String("settings")) {
        const QJsonObject settings = value.toObject();
        for (auto setting = settings.begin(); setting != settings.end(); ++setting)
            options.settings.insert(setting.key(), valueOf(setting.value()));
        return value.isObject() ? QString() : QStringLiteral("\"settings\" is not an object");
    }
    QString AttachOptions::*const path = pathByName(name);
    if (!path)
        return QStringLiteral("unknown name \"%1\"").arg(name);
    options.*path = pathIn(folder, value);
    return value.isString() ? QString() : QStringLiteral("\"%1\" is not a string").arg(name);
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
        const QString wrong = readValue(options, folder, each.key(), each.value());
        if (!wrong.isEmpty())
            errors += QStringLiteral("%1: %2").arg(file, wrong);
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
