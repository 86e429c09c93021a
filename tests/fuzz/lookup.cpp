// SPDX-License-Identifier: Apache-2.0
// Checks that the search through a file's bytes never rejects a key that the parser would find.
#include "FuzzTarget.h"
#include "HVEntryScan.h"
#include "WholeParse.h"

#include <QtCore/QSet>

#include <cstdlib>

using namespace Hovlets;

namespace {

/// Collects the keys of all entries as the parser reads them.
class KeyReader : public HVXmlParser
{
public:
    explicit KeyReader(const QByteArray &file)
        : HVXmlParser(&KeyReader::take, &m_keys)
    {
        QXmlInputSource source;
        source.setData(file);
        qDeleteAll(read(source));
    }

    const QSet<QString> &keys() const { return m_keys; }

private:
    static int take(const QString &qName, const QXmlAttributes &attributes, void *keys)
    {
        if (qName == QLatin1String("hovlet"))
            static_cast<QSet<QString> *>(keys)->insert(attributes.value(QStringLiteral("key")));
        return SkipElement;
    }

    QSet<QString> m_keys;
};

void require(bool holds, const QByteArray &file, const QString &key)
{
    if (holds)
        return;
    qCritical("The search refuses the key \"%s\" of this file:\n%s",
              key.toUtf8().toPercentEncoding().constData(), file.constData());
    std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray file(reinterpret_cast<const char *>(data), qsizetype(size));
    const QSet<QString> keys = KeyReader(file).keys();
    for (const QString &key : keys)
        require(HVEntryScan(key).mayHold(file), file, key);

    // An element that the parser takes for an entry may not be one, and then any key matches.
    const QString absent = QStringLiteral("no-such-key");
    if (WholeParse(file, absent).entry())
        require(HVEntryScan(absent).mayHold(file), file, absent);
    return 0;
}
