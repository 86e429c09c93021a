// SPDX-License-Identifier: Apache-2.0
#include "ControlInventory.h"

#include "AttachedHost.h"
#include "ControlTexts.h"

#include <Hovlets/HVPopup.h>
#include <QtCore/QBuffer>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QSaveFile>
#include <QtGui/QPixmap>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

namespace Hovlets {

namespace {

constexpr int CollectInterval = 500; // ms
constexpr int IconSize = 32; // pixels

/// A PNG file, or nothing for a null icon.
QByteArray pngOf(const QIcon &icon)
{
    QBuffer buffer;
    const QPixmap pixmap = icon.pixmap(IconSize, IconSize);
    if (!pixmap.isNull() && buffer.open(QIODevice::WriteOnly))
        pixmap.save(&buffer, "PNG");
    return buffer.data();
}

QJsonObject toJson(const HVKeyedControl &control, const ControlPlace &place)
{
    const ControlTexts &texts = place.texts;
    QJsonObject object { { QStringLiteral("key"), control.key },
                         { QStringLiteral("path"), control.path },
                         { QStringLiteral("class"),
                           QLatin1String(place.object->metaObject()->className()) } };
    const auto insert = [&object](const char *name, const QString &text) {
        if (!text.isEmpty())
            object.insert(QLatin1String(name), text);
    };
    insert("label", texts.label);
    insert("shortcut", texts.shortcut);
    insert("toolTip", texts.toolTip);
    insert("statusTip", texts.statusTip);
    insert("whatsThis", texts.whatsThis);
    insert("icon", QString::fromLatin1(pngOf(texts.icon).toBase64()));
    return object;
}

/// Windows that do not belong to the program.
bool isForeign(const QWidget &window)
{
    return !HVPopup(&window).isNull() || window.inherits("QTipLabel")
            || window.inherits("QComboBoxPrivateContainer");
}

} // namespace

ControlInventory::ControlInventory(AttachedHost &host, const QString &file)
    : m_host(host)
    , m_file(file)
{
    connect(&m_timer, &QTimer::timeout, this, &ControlInventory::collect);
    m_timer.start(CollectInterval);
}

ControlInventory::~ControlInventory()
{
    collect();
}

void ControlInventory::collect()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        // Menus, dialogs and floating docks are children of other windows, too.
        if (!window->parentWidget() && !isForeign(*window))
            collectIn(window);
    }
    write();
}

/// Parents come first: the inner parts of a control have its key.
void ControlInventory::collectIn(QWidget *widget)
{
    const QVector<ControlPlace> places = controlsOf(widget);
    for (const ControlPlace &place : places) {
        if (place.texts.isEmpty())
            continue;
        const HVKeyedControl found = m_host.standardKeys().find(place.object, place.position);
        if (found.key.isEmpty() || m_keys.contains(found.key))
            continue;
        m_keys.insert(found.key);
        m_controls.append(toJson(found, place));
    }
    const QObjectList children = widget->children();
    for (QObject *child : children) {
        auto *below = qobject_cast<QWidget *>(child);
        if (below && !(below->isWindow() && isForeign(*below)))
            collectIn(below);
    }
}

void ControlInventory::write()
{
    if (m_written == m_controls.size())
        return;
    const QJsonObject inventory { { QStringLiteral("format"), QStringLiteral("hovlets-controls") },
                                  { QStringLiteral("version"), 1 },
                                  { QStringLiteral("controls"), m_controls } };
    const QByteArray bytes = QJsonDocument(inventory).toJson();
    QSaveFile file(m_file);
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit())
        m_written = m_controls.size();
}

} // namespace Hovlets
