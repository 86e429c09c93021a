// SPDX-License-Identifier: Apache-2.0
// Checks that no control file, and no text in it, can harm a host that looks up entries.
#include "FuzzTarget.h"
#include "HVContentTree.h"
#include "HVContext.h"
#include "HVEntryContent.h"
#include "HVIndex.h"
#include "HVInterpolation.h"
#include "HVXmlElement.h"
#include "PackageFolder.h"

#include <utility>

using namespace Hovlets;

namespace {

/// Translates nothing, and takes every picture for one that exists. The control file serves as the
/// captions of each clip, too.
class Services : public HVEntryServices
{
public:
    explicit Services(QByteArray file)
        : m_file(std::move(file))
    {
    }

    QString translate(const QString &, const QString &) override { return {}; }
    QString interpolate(const QString &text) override { return interpolated(text, m_properties); }
    QString resource(const QString &relativePath) override { return relativePath; }
    bool canShowPicture(const QString &) override { return true; }
    QString optionalResource(const QString &relativePath, const QString &) override
    {
        return relativePath;
    }
    QByteArray captionFile(const QString &) override
    {
        return "WEBVTT\n\n00:00.000 --> 00:01.000\n" + m_file;
    }

private:
    QByteArray m_file;
    const QMap<QString, QVariant> m_properties { { QStringLiteral("application"),
                                                   QStringLiteral("50 %(percent)s") },
                                                 { QStringLiteral("percent"), 50 } };
};

/// Reads everything that a host or a user interface can read from an entry.
void readThrough(HVIndex &index, const HVXmlElement &entry, HVXmlElement &root,
                 const QByteArray &file)
{
    Services services(file);
    root.toXml();
    const QList<QObject *> elements = root.childElementList(QString());
    for (const QObject *object : elements) {
        const auto *element = qobject_cast<const HVXmlElement *>(object);
        services.interpolate(element->content());
        const QStringList names = element->attributeNames();
        for (const QString &name : names)
            services.interpolate(element->attribute(name));
    }
    (void)index.componentPathsForElement(&entry, QStringLiteral("ui/HovletsUI.qml"));
    HVLimits few;
    few.shownElements = 5;
    few.shownCharacters = 20;
    for (const HVLimits &limits : { HVLimits(), few })
        readEntry(entry, services, true, limits);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const PackageFolder folder;
    const QByteArray file(reinterpret_cast<const char *>(data), qsizetype(size));
    const QString path =
            folder.addControlFile(QStringLiteral("Fuzz"), QStringLiteral("Fuzz"), file);
    HVContext context;
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
        if (entry && root)
            readThrough(index, *entry, *root, file);
    }
    return 0;
}
