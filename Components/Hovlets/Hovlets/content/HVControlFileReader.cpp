// SPDX-License-Identifier: Apache-2.0
#include "HVControlFileReader.h"

#include "HVEntryCut.h"
#include "HVEntryScan.h"
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

/// Builds the entry whose key is \a userData, and its root.
int entryShouldGenerate(const QString &qName, const QXmlAttributes &attributes, void *userData)
{
    return childShouldGenerate(qName, attributes, QLatin1String("hovlets"), QLatin1String("hovlet"),
                               QLatin1String("key"), *static_cast<const QString *>(userData));
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

/// The part of \a bytes that the entry for \a key needs, if the rest can be left out.
QByteArray neededFor(const QString &key, const HVEntryScan &scan, const QByteArray &bytes)
{
    if (!scan.isPlainFile(bytes))
        return bytes;
    const QByteArray needed = withoutOtherEntries(bytes, key, HVLimits::current().nestingDepth);
    return !needed.isNull() && needed.size() < bytes.size() ? needed : bytes;
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
                                                         const QByteArray &bytes)
{
    const QByteArray needed = neededFor(key, scan, bytes);
    const qint64 limit = HVLimits::current().parsedSize;
    if (needed.size() > limit) {
        reportSkipped(file, QStringLiteral("more than %1 bytes to parse for an entry").arg(limit));
        return nullptr;
    }
    QString wanted = key;
    HVXmlParser parser(&entryShouldGenerate, &wanted);
    parser.registerElement(QStringLiteral("HVXmlElement"), &HVXmlElement::staticMetaObject);
    const QList<QObject *> objects = parse(parser, file, needed);
    auto *root = objects.size() == 1 ? qobject_cast<HVXmlElement *>(objects.constFirst()) : nullptr;
    if (!root || root->children().size() != 1 || !parser.isClosed() || !firstChild(*root)) {
        qDeleteAll(objects);
        return nullptr;
    }
    return std::unique_ptr<HVXmlElement>(root);
}

void HVControlFileReader::addKeyData(const QString &key, const QString &file, HVXmlElement &element)
{
    const HVFileBytes bytes = read(file);
    if (bytes.result != HVFileBytes::Result::Read)
        return;
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

void HVControlFileReader::reportSkipped(const QString &file, const QString &reason)
{
    // A QStringLiteral would add a symbol to those that hosts see.
    if (reason.isNull())
        return;
    const QString message = QLatin1String("%1 is skipped: %2").arg(file, reason);
    if (m_reported.contains(message))
        return;
    m_reported.insert(message);
    m_report(message);
}

} // namespace Hovlets
