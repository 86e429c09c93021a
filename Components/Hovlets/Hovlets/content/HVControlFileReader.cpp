// SPDX-License-Identifier: Apache-2.0
#include "HVControlFileReader.h"

#include "HVEntryCut.h"
#include "HVEntryScan.h"
#include "HVIndex.h"
#include "HVLimits.h"
#include "HVXmlElement.h"
#include "HVXmlParser.h"

#include <QXmlAttributes>
#include <QXmlInputSource>

#include <utility>

namespace Hovlets {

namespace {

/// Builds the children \a tag of a root element \a rootTag whose attribute \a name is \a value, and
/// everything below them.
int childShouldGenerate(const QString &qName, const QXmlAttributes &attributes,
                        QLatin1String rootTag, QLatin1String tag, QLatin1String name,
                        const QString &value)
{
    if (qName == rootTag)
        return HVXmlParser::GenerateAsk;
    return qName == tag && attributes.value(name) == value
            ? HVXmlParser::GenerateAsk | HVXmlParser::GenerateAll
            : HVXmlParser::SkipElement | HVXmlParser::SkipChildren;
}

/// The entry to build, and what the parser finds.
struct WantedEntry
{
    const QString &key;
    HVEntryKeys *keys; // to add all keys to, or null
    bool isFound = false;
    int roots = 0;
};

/// Builds the entry that \a userData describes, and its root.
int entryShouldGenerate(const QString &qName, const QXmlAttributes &attributes, void *userData)
{
    auto *wanted = static_cast<WantedEntry *>(userData);
    const QLatin1String root("hovlets");
    const QLatin1String tag("hovlet");
    const QLatin1String name("key");
    wanted->roots += qName == root ? 1 : 0;
    if (wanted->keys && qName == tag)
        wanted->keys->add(attributes.value(name));
    const int generate = childShouldGenerate(qName, attributes, root, tag, name, wanted->key);
    wanted->isFound |= (generate & HVXmlParser::GenerateAll) != 0;
    return generate;
}

/// Builds the record whose name is \a userData in a key-data file, and its root.
int keyDataShouldGenerate(const QString &qName, const QXmlAttributes &attributes, void *userData)
{
    return childShouldGenerate(qName, attributes, QLatin1String("hovletkeys"), QLatin1String("key"),
                               QLatin1String("name"), *static_cast<const QString *>(userData));
}

HVXmlElement *firstChild(const QObject &element)
{
    return element.children().isEmpty()
            ? nullptr
            : qobject_cast<HVXmlElement *>(element.children().constFirst());
}

} // namespace

HVControlFileReader::HVControlFileReader(Report report)
    : m_report(std::move(report))
{
}

HVFileBytes HVControlFileReader::read(const QString &file)
{
    const qint64 limit = HVLimits::current().controlFileSize;
    HVFileBytes bytes = HVFileBytes::all(file, limit);
    reportSkipped(file, bytes.problem(limit));
    return bytes;
}

QList<QObject *> HVControlFileReader::parse(HVXmlParser &parser, const QString &file,
                                            const QByteArray &bytes)
{
    QXmlInputSource source;
    source.setData(bytes);
    const QList<QObject *> objects = parser.read(source);
    reportSkipped(file, parser.limitMet());
    return objects;
}

std::unique_ptr<HVXmlElement> HVControlFileReader::entry(const QString &key,
                                                         const HVEntryScan &scan,
                                                         const QString &file,
                                                         const QByteArray &bytes, HVEntryKeys &keys)
{
    const HVLimits limits = HVLimits::current();
    HVEntryCut cut;
    if (scan.isPlainFile(bytes))
        cut = withoutOtherEntries(bytes, key, limits.nestingDepth, limits.parsedSize);
    if (cut.state == HVEntryCut::Ambiguous)
        return nullptr;
    const QByteArray &needed = cut.state == HVEntryCut::Done ? cut.bytes : bytes;
    if (needed.size() > limits.parsedSize) {
        reportTooLarge(file);
        if (cut.state == HVEntryCut::InDoubt && !scan.plainKey().isNull())
            keys.clear(); // the same for all keys
        return nullptr;
    }
    WantedEntry wanted { key, keys.isComplete() ? nullptr : &keys };
    HVXmlParser parser(&entryShouldGenerate, &wanted);
    parser.registerElement(QStringLiteral("HVXmlElement"), &HVXmlElement::staticMetaObject);
    const QList<QObject *> objects = parse(parser, file, needed);
    if (wanted.keys && !parser.isClosed() && !wanted.isFound)
        keys.clear(); // nothing was built that other keys would not build
    else if (wanted.keys && parser.limitMet().isNull() && wanted.roots <= 1)
        keys.complete(); // with a root in the root, which counts as an entry, any key may match
    auto *root = objects.size() == 1 ? qobject_cast<HVXmlElement *>(objects.constFirst()) : nullptr;
    if (!root || root->children().size() != 1 || !parser.isClosed() || !firstChild(*root)) {
        qDeleteAll(objects);
        return nullptr;
    }
    return std::unique_ptr<HVXmlElement>(root);
}

QStringList HVControlFileReader::keys(const QString &file)
{
    const HVFileBytes read = this->read(file);
    if (read.result != HVFileBytes::Result::Read)
        return {};
    const HVLimits limits = HVLimits::current();
    if (HVEntryScan(QString()).isPlainFile(read.bytes)) {
        if (const auto keys = keysOfEntries(read.bytes, limits.nestingDepth))
            return *keys;
    }
    if (read.bytes.size() > limits.parsedSize) {
        reportTooLarge(file);
        return {};
    }
    HVXmlParser parser(&HVIndex::indexDataShouldGenerateElement);
    const QList<QObject *> objects = parse(parser, file, read.bytes);
    Q_ASSERT_X(!objects.isEmpty(), "HVIndex::keys", "a control file without a root element");
    QStringList keys;
    const QObjectList entries =
            objects.isEmpty() ? QObjectList() : objects.constFirst()->children();
    for (QObject *child : entries) {
        const auto *entry = qobject_cast<HVXmlElement *>(child);
        if (entry && entry->hasAttribute(QStringLiteral("key")))
            keys += entry->attribute(QStringLiteral("key"));
    }
    qDeleteAll(objects);
    return keys;
}

void HVControlFileReader::addKeyData(const QString &key, const QString &file, HVXmlElement &element)
{
    const HVFileBytes bytes = read(file);
    if (bytes.result != HVFileBytes::Result::Read)
        return;
    if (bytes.bytes.size() > HVLimits::current().parsedSize) {
        reportTooLarge(file);
        return;
    }
    QString wanted = key;
    HVXmlParser parser(&keyDataShouldGenerate, &wanted);
    parser.registerElement(QStringLiteral("HVXmlElement"), &HVXmlElement::staticMetaObject);
    const QList<QObject *> objects = parse(parser, file, bytes.bytes);
    const HVXmlElement *record = objects.isEmpty() ? nullptr : firstChild(*objects.constFirst());
    const QStringList names = record ? record->attributeNames() : QStringList();
    for (const QString &name : names) {
        if (name != QLatin1String("name"))
            element.setAttribute(name, record->attribute(name));
    }
    qDeleteAll(objects);
}

void HVControlFileReader::reportTooLarge(const QString &file)
{
    reportSkipped(file,
                  QStringLiteral("more than %1 bytes to parse for an entry")
                          .arg(HVLimits::current().parsedSize));
}

void HVControlFileReader::reportSkipped(const QString &file, const QString &reason)
{
    if (reason.isNull())
        return;
    const QString message = QStringLiteral("%1 is skipped: %2").arg(file, reason);
    if (m_reported.contains(message))
        return;
    m_reported.insert(message);
    m_report(message);
}

} // namespace Hovlets
