// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVContext.h"
#include "HVView.h"
#include "HVWidget.h"
#include "PackageFolder.h"
#include "RecordingHost.h"

#include <QtCore/QRectF>
#include <QtCore/QStringList>
#include <QtGui/QColor>
#include <QtGui/QImage>
#include <QtQuick/QQuickItem>

#include <functional>

/*!
 * \brief The default user interface, showing entries of a test.
 *
 * Finds visible items by object name.
 */
class DefaultUiBench
{
public:
    /// \a entries: the "hovlet" elements of the control file.
    explicit DefaultUiBench(const QByteArray &entries);

    /// An entry with the key "key".
    static QByteArray entry(const QByteArray &attributes, const QByteArray &children = {},
                            const QByteArray &key = "key");

    bool show(const QString &key = QStringLiteral("key"));

    HVContext &context() { return host.manager()->context(); }
    Hovlets::HVView *view() { return host.view(); }
    QQuickItem *root() { return view()->rootObject(); }

    QList<QQuickItem *> items(const QString &name) { return itemsOf(root(), name); }
    static QList<QQuickItem *> itemsOf(QQuickItem *root, const QString &name);

    /// The first matching item, or null.
    QQuickItem *item(const char *name);

    /// The texts of the items.
    QStringList texts(const char *name);

    /// All items that show text.
    QList<QQuickItem *> textItems();

    /// The item's rectangle, in the root item's coordinates.
    QRectF place(const QQuickItem *item);

    /// Clicks the middle of the item.
    void click(QQuickItem *item);

    /// The position of the first link in a text item, in the root item's coordinates; null if none.
    QPointF linkPosition(QQuickItem *text);

    /// The current picture of the view. A grab of the widget would return its last frame.
    QImage grab() { return view()->grabFramebuffer(); }

    /// Renders, and processes everything that is due.
    void settle();

    /// Messages of the QML engine, and about files that were not found.
    QStringList complaints() { return host.messagesOf(Hovlets::HVMessageDebug); }

    static double contrast(const QColor &a, const QColor &b);

    /// The colour among the pixels of \a area that differs most from \a from.
    QColor strongest(const QRectF &area, const QColor &from);

    PackageFolder folder;
    HVContext settings;

    /// Translates with \a translation if that is set.
    class Host : public RecordingHost
    {
    public:
        using RecordingHost::RecordingHost;
        QString translateString(const QString &text, const QString &context) override;
        std::function<QString(const QString &text, const QString &context)> translation;
    };
    Host host;
};
