// SPDX-License-Identifier: Apache-2.0
#include "HVIndex.h"

#include "HVContext.h"
#include "HVControlFileReader.h"
#include "HVControlFiles.h"
#include "HVEntryScan.h"
#include "HVFileBytes.h"
#include "HVFileMemory.h"
#include "HVSearchFolders.h"
#include "HVSearchedPackages.h"
#include "HVXmlElement.h"
#include "HVXmlParser.h"

#include <QXmlAttributes>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QMap>
#include <QtCore/QPointer>

namespace Hovlets {

class HVIndex::Private
{
public:
    explicit Private(HVIndex *owner)
        : owner(owner)
        , reader([owner](const QString &message) { Q_EMIT owner->fileSkipped(message); })
    {
    }

    HVContext &currentContext()
    {
        if (!context)
            context = new HVContext(owner);
        return *context;
    }

    HVIndex *owner;
    QPointer<HVContext> context;
    QStringList dataPaths;
    HVControlFiles controlFiles;
    HVControlFileReader reader;
    HVFileMemory memory;
    QMap<QString, QStringList> packages; // folders by name, in the order of registration
    HVSearchedPackages searched;
    // Cached because the files of a package are adjacent, and finding its name reads the disk.
    QString lastMapped; // location
    QString lastSuffix; // at that time
    bool inUpdate = false;
};

namespace {

QString packageSuffix(const HVContext &context)
{
    return context.get(HVKeyPackageSuffix).toString();
}

} // namespace

HVIndex::HVIndex(HVContext *context, const QStringList &dataPaths)
    : d(std::make_unique<Private>(this))
{
    d->context = context;
    d->dataPaths = dataPaths;
}

HVIndex::~HVIndex() = default;

bool HVIndex::open()
{
    return true;
}

bool HVIndex::setup()
{
    if (context().get(HVKeyClearIndexOnSetup).toBool())
        clear();
    return true;
}

bool HVIndex::clear()
{
    return true;
}

bool HVIndex::close()
{
    return true;
}

bool HVIndex::remove()
{
    return true;
}

HVXmlElement *HVIndex::retrieve(const QString &key, const QLocale &locale, QString &path,
                                int &depth, HVXmlElement *&root)
{
    const QList<HVControlFiles::File> files = d->controlFiles.files(); // messages may add files
    const HVEntryScan scan(key);
    for (const HVControlFiles::File &file : files) {
        if (!d->memory.mayHold(file.path, scan, locale))
            continue;
        if (HVXmlElement *entry = load(key, file.path, locale, root)) {
            depth = qMax(1, file.depth);
            path = QFileInfo(file.path).absolutePath();
            return entry;
        }
    }
    return nullptr;
}

bool HVIndex::store(HVXmlElement *element, const QLocale &locale, const QString &path, int depth)
{
    Q_UNUSED(element)
    Q_UNUSED(locale)
    d->controlFiles.append({ path, depth });
    return true;
}

void HVIndex::startUpdate()
{
    d->inUpdate = true;
}

void HVIndex::endUpdate()
{
    d->inUpdate = false;
}

bool HVIndex::isInUpdate() const
{
    return d->inUpdate;
}

QStringList HVIndex::keys()
{
    QStringList keys;
    const QList<HVControlFiles::File> files = d->controlFiles.files();
    for (const HVControlFiles::File &file : files)
        keys += d->reader.keys(file.path);
    return keys;
}

void HVIndex::indexControlFile(const QString &file, const QString &location)
{
    const int depth = d->controlFiles.depthBelow(file, location);
    if (depth < 0)
        return;
    QString problem;
    const bool isControlFile = HVControlFiles::findControlFile(file, problem);
    d->reader.reportSkipped(file, problem);
    if (!isControlFile)
        return;
    if (d->controlFiles.prepend({ file, depth }))
        mapControlFile(file, location);
}

void HVIndex::mapControlFile(const QString &file, const QString &location)
{
    Q_UNUSED(file)
    const QString suffix = packageSuffix(context());
    if (d->lastMapped == location && d->lastSuffix == suffix)
        return;
    const QString name = packageNameForLocation(location);
    if (!name.isNull()) { // a folder that does not exist yet may appear later
        d->lastMapped = location;
        d->lastSuffix = suffix;
    }
    d->searched.clear();
    QStringList &folders = d->packages[name];
    if (!folders.contains(location))
        folders.append(location);
}

QString HVIndex::packageNameForLocation(const QString &location) const
{
    const QString suffix = packageSuffix(context());
    QFileInfo info(location);
    while (!info.filePath().isEmpty() && !info.isRoot()) {
        if (info.suffix() == suffix && info.isDir())
            return info.completeBaseName();
        info.setFile(info.absolutePath());
    }
    return {};
}

HVXmlElement *HVIndex::load(const QString &key, const QString &file, const QLocale &locale,
                            HVXmlElement *&root)
{
    const HVEntryScan scan(key);
    const HVFileBytes read = d->reader.read(file);
    const HVFileMemory::Keys keys = d->memory.remember(file, read);
    if (read.bytes.isEmpty() || !keys->mayHold(scan))
        return nullptr;
    if (!keys->isComplete() && !scan.mayHold(read.bytes))
        return nullptr;
    auto top = d->reader.entry(key, scan, file, read.bytes, *keys);
    if (!top) {
        d->memory.rememberRefusal(file, keys, scan);
        return nullptr;
    }
    const QString fileLocale = top->attribute(QStringLiteral("locale"));
    d->memory.rememberLocale(file, fileLocale);
    if (!fileLocale.isEmpty() && QLocale(fileLocale) != locale)
        return nullptr;

    root = top.release();
    auto *entry = static_cast<HVXmlElement *>(root->children().constFirst());
    loadKeyData(key, file, entry);
    entry->setAttribute(QStringLiteral("HVLocation"), file);
    // The missing letter is deliberate: content and hosts read the attribute by this name.
    entry->setAttribute(QStringLiteral("HVPackagName"), packageNameForLocation(file));
    return entry;
}

void HVIndex::loadKeyData(const QString &key, const QString &location, HVXmlElement *element)
{
    Q_UNUSED(location)
    const QString file = context().get(HVKeyKeyDataFile).toString();
    if (!file.isEmpty())
        d->reader.addKeyData(key, file, *element);
}

QStringList HVIndex::componentPathsForPackageNamed(const QString &name) const
{
    QStringList paths = d->packages.value(name);
    const QString extra = context().get(HVKeyExtraComponentPath).toString();
    if (!extra.isEmpty())
        paths.append(extra);
    return paths;
}

QStringList HVIndex::componentPathsForElement(const HVXmlElement *element,
                                              const QString &fileName) const
{
    if (!element)
        return {};
    QStringList paths =
            componentPathsForPackageNamed(element->attribute(QStringLiteral("HVPackagName")));
    const auto *root = qobject_cast<const HVXmlElement *>(element->parent());
    const QString search = root ? root->attribute(QStringLiteral("search")) : QString();
    if (!search.isEmpty()) {
        const QStringList names = HVSearchedPackages::names(search);
        for (const QString &name : names)
            paths += d->packages.value(name);
    }
    if (fileName.isEmpty())
        return paths;

    for (QString &path : paths)
        path = QDir(path).absoluteFilePath(fileName);
    return paths;
}

QStringList searchFolders(const HVIndex &index, const HVXmlElement *element)
{
    if (!element)
        return {};
    QStringList folders =
            index.componentPathsForPackageNamed(element->attribute(QStringLiteral("HVPackagName")));
    if (const auto *root = qobject_cast<const HVXmlElement *>(element->parent()))
        folders += index.d->searched.folders(root->attribute(QStringLiteral("search")),
                                             index.d->packages);
    folders.removeDuplicates();
    return folders;
}

int HVIndex::indexDataShouldGenerateElement(const QString &qName, const QXmlAttributes &attributes,
                                            void *userData)
{
    Q_UNUSED(attributes)
    Q_UNUSED(userData)
    return qName == QLatin1String("hovlet") || qName == QLatin1String("hovlets")
            ? HVXmlParser::GenerateAsk
            : HVXmlParser::SkipElement;
}

HVContext &HVIndex::context()
{
    return d->currentContext();
}

const HVContext &HVIndex::context() const
{
    return d->currentContext();
}

} // namespace Hovlets
