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
 * Items are found by their object name, among those that are on screen.
 */
class DefaultUiBench
{
public:
    /// \a entries are the "hovlet" elements of the control file.
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

    /// The first of them, or null.
    QQuickItem *item(const char *name);

    /// What the items say.
    QStringList texts(const char *name);

    /// Every item that shows text.
    QList<QQuickItem *> textItems();

    /// The item's place in the root item.
    QRectF place(const QQuickItem *item);

    /// Clicks on its middle.
    void click(QQuickItem *item);

    /// Where in a text item its first link is, in the root item; null when there is none.
    QPointF linkPosition(QQuickItem *text);

    /// The view as it is now; a widget's own grab shows its last frame.
    QImage grab() { return view()->grabFramebuffer(); }

    /// Renders, and lets everything happen that is due.
    void settle();

    /// What was said by the QML engine, and of files that were not found.
    QStringList complaints() { return host.messagesOf(Hovlets::HVMessageDebug); }

    static double contrast(const QColor &a, const QColor &b);

    /// The colour that stands out most from \a from among the pixels of \a area.
    QColor strongest(const QRectF &area, const QColor &from);

    PackageFolder folder;
    HVContext settings;

    /// Translates by \a translation, when it is set.
    class Host : public RecordingHost
    {
    public:
        using RecordingHost::RecordingHost;
        QString translateString(const QString &text, const QString &context) override;
        std::function<QString(const QString &text, const QString &context)> translation;
    };
    Host host;
};
