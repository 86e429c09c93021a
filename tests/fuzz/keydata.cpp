// SPDX-License-Identifier: Apache-2.0
// Checks that no key-data file can harm a host that looks up entries.
#include "FuzzTarget.h"
#include "HVControlFileReader.h"
#include "HVXmlElement.h"
#include "KeyReader.h"
#include "PackageFolder.h"

#include <cstdlib>

using namespace Hovlets;

namespace {

/// Adds what the file has for a key to an entry. Only attributes may change, except the name.
void addTo(const QString &path, const QString &key)
{
    HVXmlElement entry;
    entry.setAttribute(QStringLiteral("name"), QStringLiteral("n"));
    entry.setAttribute(QStringLiteral("key"), key);
    entry.setContent(QStringLiteral("text"));
    HVControlFileReader([](const QString &) { /* ignored */ }).addKeyData(key, path, entry);
    if (entry.attribute(QStringLiteral("name")) != QLatin1String("n")
        || entry.content() != QLatin1String("text") || !entry.children().isEmpty())
        std::abort();
    entry.toXml();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const PackageFolder folder;
    const QByteArray file(reinterpret_cast<const char *>(data), qsizetype(size));
    const QString path = folder.add(QStringLiteral("keys.xml"), file);
    const QStringList keys = KeyReader(file, QLatin1String("key"), QLatin1String("name")).keys();
    for (const QString &key : keys)
        addTo(path, key);
    addTo(path, QStringLiteral("no-such-key"));
    return 0;
}
