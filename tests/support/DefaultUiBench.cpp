// SPDX-License-Identifier: Apache-2.0
#include "DefaultUiBench.h"

#include <QtCore/QCoreApplication>
#include <QtTest/QtTest>

#include <cmath>

using namespace Hovlets;

namespace {

HVContext &settingsFor(HVContext &settings, const PackageFolder &folder, const QByteArray &entries)
{
    folder.addControlFile(QStringLiteral("Test"), QStringLiteral("content"),
                          "<hovlets search=\"Default\">\n" + entries + "</hovlets>\n");
    settings.set(HVKeyMessageLevel, HVMessageDebug);
    settings.set(HVKeyHideDelay, 0);
    return settings;
}

double luminance(const QColor &colour)
{
    const auto channel = [](double value) {
        return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * channel(colour.redF()) + 0.7152 * channel(colour.greenF())
            + 0.0722 * channel(colour.blueF());
}

void collect(QQuickItem *item, const std::function<bool(QQuickItem *)> &wanted,
             QList<QQuickItem *> &found)
{
    if (!item->isVisible())
        return;
    if (wanted(item))
        found.append(item);
    const QList<QQuickItem *> children = item->childItems();
    for (QQuickItem *child : children)
        collect(child, wanted, found);
}

} // namespace

DefaultUiBench::DefaultUiBench(const QByteArray &entries)
    : host(settingsFor(settings, folder, entries),
           { folder.path(), QStringLiteral(HOVLETS_PACKAGES) })
{
}

QByteArray DefaultUiBench::entry(const QByteArray &attributes, const QByteArray &children,
                                 const QByteArray &key)
{
    return "<hovlet key=\"" + key + "\" " + attributes + ">" + children + "</hovlet>\n";
}

bool DefaultUiBench::show(const QString &key)
{
    return host.manager()->show(key, QPoint(10, 10), nullptr) && root();
}

QList<QQuickItem *> DefaultUiBench::itemsOf(QQuickItem *root, const QString &name)
{
    QList<QQuickItem *> found;
    if (!root)
        return found;
    const auto isNamed = [&](QQuickItem *item) { return item->objectName() == name; };
    collect(root, isNamed, found);
    return found;
}

QQuickItem *DefaultUiBench::item(const char *name)
{
    return items(QLatin1String(name)).value(0);
}

QStringList DefaultUiBench::texts(const char *name)
{
    QStringList texts;
    const QList<QQuickItem *> found = items(QLatin1String(name));
    for (const QQuickItem *item : found)
        texts += item->property("source").toString();
    return texts;
}

QList<QQuickItem *> DefaultUiBench::textItems()
{
    QList<QQuickItem *> found;
    const auto isText = [](QQuickItem *item) { return item->inherits("QQuickText"); };
    collect(root(), isText, found);
    return found;
}

QRectF DefaultUiBench::place(const QQuickItem *item)
{
    return item->mapRectToItem(root(), QRectF(0, 0, item->width(), item->height()));
}

void DefaultUiBench::click(QQuickItem *item)
{
    QTest::mouseClick(view(), Qt::LeftButton, {}, place(item).center().toPoint());
}

QPointF DefaultUiBench::linkPosition(QQuickItem *text)
{
    for (int y = 1; y < text->height(); y += 2) {
        for (int x = 1; x < text->width(); x += 2) {
            QString link;
            QMetaObject::invokeMethod(text, "linkAt", Q_RETURN_ARG(QString, link), Q_ARG(qreal, x),
                                      Q_ARG(qreal, y));
            if (!link.isEmpty())
                return text->mapToItem(root(), QPointF(x + 1, y + 1));
        }
    }
    return {};
}

void DefaultUiBench::settle()
{
    for (int frame = 0; frame < 3; ++frame) {
        grab();
        QCoreApplication::processEvents();
    }
}

double DefaultUiBench::contrast(const QColor &a, const QColor &b)
{
    const double first = luminance(a);
    const double second = luminance(b);
    return (qMax(first, second) + 0.05) / (qMin(first, second) + 0.05);
}

QColor DefaultUiBench::strongest(const QRectF &area, const QColor &from)
{
    const QImage image = grab();
    const QRect pixels = area.toAlignedRect().intersected(image.rect());
    QColor strongest = from;
    for (int y = pixels.top(); y <= pixels.bottom(); ++y) {
        for (int x = pixels.left(); x <= pixels.right(); ++x) {
            const QColor colour = image.pixelColor(x, y);
            if (contrast(colour, from) > contrast(strongest, from))
                strongest = colour;
        }
    }
    return strongest;
}

QString DefaultUiBench::Host::translateString(const QString &text, const QString &context)
{
    return translation ? translation(text, context) : RecordingHost::translateString(text, context);
}
