// SPDX-License-Identifier: Apache-2.0
// Checks that a look-up finds in every file what the parser finds in all of it, although it
// searches the bytes for the key first and leaves other entries out.
#include "FuzzTarget.h"
#include "HVControlFileReader.h"
#include "HVEntryScan.h"
#include "KeyReader.h"
#include "WholeParse.h"

#include <cstdlib>

using namespace Hovlets;

namespace {

void require(bool holds, const char *what, const QByteArray &file, const QString &key)
{
    if (holds)
        return;
    qCritical("%s the key \"%s\" of this file:\n%s", what,
              key.toUtf8().toPercentEncoding().constData(), file.constData());
    std::abort();
}

/// Tags, attributes and texts of an element and everything below it.
QString description(HVXmlElement *root)
{
    if (!root)
        return {};
    QString text = root->toXml() + root->content();
    const QList<QObject *> elements = root->childElementList(QString());
    for (const QObject *element : elements)
        text += QLatin1Char('|') + qobject_cast<const HVXmlElement *>(element)->content();
    return text;
}

void lookUp(const QByteArray &file, const QString &key)
{
    const WholeParse whole(file, key);
    const HVEntryScan scan(key);
    const bool mayHold = scan.mayHold(file);
    require(mayHold || !whole.entry(), "The search refuses", file, key);
    HVEntryKeys keys(file);
    require(keys.mayHold(scan) || !mayHold, "The keys in memory lack", file, key);

    HVControlFileReader reader([](const QString &) { /* ignored */ });
    const auto found = reader.entry(key, scan, QStringLiteral("file"), file, keys);
    require(description(found.get()) == description(whole.entry() ? whole.root() : nullptr),
            "The entry without others differs for", file, key);
    require(keys.mayHold(scan) || !found, "The parsed keys lack", file, key);
    const HVEntryScan other(QStringLiteral("another-key"));
    require(keys.mayHold(other) || !WholeParse(file, QStringLiteral("another-key")).entry(),
            "The parsed keys lack another one of", file, key);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray file(reinterpret_cast<const char *>(data), qsizetype(size));
    const QStringList keys = KeyReader(file, QLatin1String("hovlet"), QLatin1String("key")).keys();
    for (const QString &key : keys)
        require(HVEntryScan(key).mayHold(file), "The search refuses", file, key);

    // Each takes two parses, which leave little time for other files if there are many.
    constexpr int MostLookUps = 2;
    for (const QString &key : keys.mid(0, MostLookUps))
        lookUp(file, key);

    // An element that the parser takes for an entry may not be one, and then any key matches.
    lookUp(file, QStringLiteral("no-such-key"));
    return 0;
}
