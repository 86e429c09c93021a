// SPDX-License-Identifier: Apache-2.0
#include "RunningControls.h"

#include "ReadFile.h"
#include "TipText.h"
#include "ToolError.h"

#include <QtCore/QFileInfo>
#include <QtCore/QHash>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QRegularExpression>
#include <QtCore/QSet>

namespace HovletsTool {

namespace {

constexpr qint64 MaxInventory = qint64 { 256 } * 1024 * 1024; // bytes, far more than any has

/// Makes paths for the icons of controls.
class IconPaths
{
public:
    /// A path that no other icon has.
    QString pathFor(const QString &key)
    {
        constexpr int Longest = 100; // characters; file systems allow 255 bytes
        static const QRegularExpression unusual(QStringLiteral("[^-\\w]+"));
        const QString base = QStringLiteral("icons/")
                + QString(key).replace(unusual, QStringLiteral("_")).left(Longest);
        QString path = base + QStringLiteral(".png");
        for (int &number = m_numbers[base]; m_paths.contains(path); ++number)
            path = QStringLiteral("%1-%2.png").arg(base).arg(number + 2);
        m_paths.insert(path);
        return path;
    }

private:
    QSet<QString> m_paths;
    QHash<QString, int> m_numbers; // how many paths with a number were tried, by path without it
};

bool hasTip(const FormObject &object)
{
    return !object.toolTip.isEmpty() || !object.statusTip.isEmpty() || !object.whatsThis.isEmpty();
}

FormObject objectOf(const QJsonObject &control)
{
    const auto text = [&control](const char *name) {
        FormText read;
        read.text = control.value(QLatin1String(name)).toString();
        if (plainText(read.text).isEmpty())
            read.text.clear();
        return read;
    };
    FormObject object;
    object.name = control.value(QLatin1String("key")).toString();
    object.label = text("label");
    object.shortcut = text("shortcut");
    object.toolTip = text("toolTip");
    object.statusTip = text("statusTip");
    object.whatsThis = text("whatsThis");
    if (!hasTip(object))
        object.toolTip.text = plainLabel(object.label.text);
    return object;
}

} // namespace

RunningControls readRunningControls(const QString &path)
{
    if (!QFileInfo(path).isFile())
        throw ToolError(QStringLiteral("the program ended before its controls could be read"));
    const QJsonObject inventory = QJsonDocument::fromJson(readFile(path, MaxInventory)).object();
    const QJsonArray all = inventory.value(QLatin1String("controls")).toArray();
    RunningControls controls;
    IconPaths paths;
    for (const auto &each : all) {
        const QJsonObject control = each.toObject();
        FormObject object = objectOf(control);
        if (object.name.isEmpty() || !hasTip(object))
            continue;
        const QByteArray icon =
                QByteArray::fromBase64(control.value(QLatin1String("icon")).toString().toLatin1());
        if (!icon.isEmpty()) {
            object.icon = paths.pathFor(object.name);
            controls.icons.insert(object.icon, icon);
        }
        controls.objects.push_back(object);
    }
    if (controls.objects.empty())
        throw ToolError(QStringLiteral("the program showed no controls with a name or a text"));
    return controls;
}

} // namespace HovletsTool
