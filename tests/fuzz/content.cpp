// SPDX-License-Identifier: Apache-2.0
// Checks that no control file, key-data file or text in them can harm a host that looks up entries.
#include "FuzzTarget.h"
#include "HVContentTree.h"
#include "HVContext.h"
#include "HVIndex.h"
#include "HVInterpolation.h"
#include "HVXmlElement.h"
#include "PackageFolder.h"

using namespace Hovlets;

namespace {

/// Reads everything that a host or a user interface can read from an entry.
void readThrough(HVIndex &index, const HVXmlElement *entry, HVXmlElement *root)
{
    const QMap<QString, QVariant> properties { { QStringLiteral("application"),
                                                 QStringLiteral("50 %(percent)s") },
                                               { QStringLiteral("percent"), 50 } };
    root->toXml();
    const QList<QObject *> elements = root->childElementList(QString());
    for (const QObject *object : elements) {
        const auto *element = qobject_cast<const HVXmlElement *>(object);
        interpolated(element->content(), properties);
        const QStringList names = element->attributeNames();
        for (const QString &name : names)
            interpolated(element->attribute(name), properties);
    }
    index.componentPathsForElement(entry, QStringLiteral("ui/HovletsUI.qml"));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const PackageFolder folder;
    const QString path = folder.addControlFile(
            QStringLiteral("Fuzz"), QStringLiteral("Fuzz"),
            QByteArray(reinterpret_cast<const char *>(data), qsizetype(size)));
    HVContext context;
    context.set(HVKeyKeyDataFile, path);
    HVIndex index(&context, {});
    index.indexControlFile(path, folder.path() + QLatin1String("/Fuzz.hovlets"));

    QStringList keys = index.keys();
    keys.removeDuplicates();
    keys += { QString(), QStringLiteral("no-such-key") };
    for (const QString &key : keys) {
        QString where;
        int depth = 0;
        HVXmlElement *root = nullptr;
        HVXmlElement *entry =
                index.retrieve(key, QLocale(QStringLiteral("en_US")), where, depth, root);
        const HVContentTree owned(entry, root);
        if (entry)
            readThrough(index, entry, root);
    }
    return 0;
}
