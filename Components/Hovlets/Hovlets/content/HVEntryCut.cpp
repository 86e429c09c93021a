// SPDX-License-Identifier: Apache-2.0
#include "HVEntryCut.h"

#include "HVPlainXml.h"

#include <algorithm>
#include <vector>

namespace Hovlets {

namespace {

using Bytes = HVPlainXml::Bytes;

Bytes viewOf(const QByteArray &array)
{
    return { array.constData(), static_cast<size_t>(array.size()) };
}

/// Only the parser knows what such a key means.
bool hasDoubtfulKey(const HVPlainXml::Tag &tag)
{
    return std::any_of(tag.key.begin(), tag.key.end(),
                       [](char c) { return c == '&' || c == '\t' || c == '\r' || c == '\n'; });
}

/// Finds the entries of a control file. Functions that return bool return false if the file is in
/// doubt, or if reading ends for another reason.
class EntryReader
{
    Q_DISABLE_COPY_MOVE(EntryReader)

public:
    EntryReader(Bytes file, int depth)
        : m_xml(file)
        , m_depth(static_cast<size_t>(qMax(0, depth)))
    {
    }
    virtual ~EntryReader() = default;

    bool readDocument()
    {
        return m_xml.skipDeclaration() && m_xml.skipOutsideRoot() && readRoot()
                && m_xml.skipOutsideRoot() && m_xml.isAtEnd();
    }

protected:
    HVPlainXml &xml() { return m_xml; }
    const HVPlainXml &xml() const { return m_xml; }

private:
    /// Called after the start tag of a child of the root, which began at \a start.
    virtual bool beginEntry(const HVPlainXml::Tag &tag, const char *start) = 0;
    virtual void endEntry() { }

    /// Reads the root and everything below it.
    bool readRoot()
    {
        do {
            if (!m_open.empty() && !m_xml.skipText())
                return false;
            const HVPlainXml::Construct construct = m_xml.next();
            const bool isRead = construct == HVPlainXml::Construct::EndTag ? readEndTag()
                    : construct == HVPlainXml::Construct::Section          ? m_xml.skipSection(true)
                                                                           : readStartTag();
            if (!isRead)
                return false;
        } while (!m_open.empty());
        return true;
    }

    bool readStartTag()
    {
        const char *const start = m_xml.position();
        HVPlainXml::Tag tag;
        if (!m_xml.readStartTag(tag) || m_open.size() >= m_depth)
            return false;
        if ((tag.name == "hovlets") != m_open.empty())
            return false;
        if (m_open.size() == 1 && !beginEntry(tag, start))
            return false;
        if (!tag.isClosed)
            m_open.push_back(tag.name);
        else if (m_open.size() == 1)
            endEntry();
        return true;
    }

    bool readEndTag()
    {
        if (m_open.empty() || !m_xml.readEndTag(m_open.back()))
            return false;
        m_open.pop_back();
        if (m_open.size() == 1)
            endEntry();
        return true;
    }

    HVPlainXml m_xml;
    std::vector<Bytes> m_open; // the names of the open elements
    size_t m_depth;
};

/// Leaves out the entries that do not have a key.
class EntryCutter : public EntryReader
{
public:
    EntryCutter(Bytes file, Bytes key, int depth, qint64 most)
        : EntryReader(file, depth)
        , m_file(file)
        , m_kept(file.data())
        , m_key(key)
        , m_most(static_cast<size_t>(qMax<qint64>(0, most)))
    {
        stopWhenTooLarge();
    }

    HVEntryCut result()
    {
        const bool isRead = readDocument();
        const char *const end = xml().position();
        if (!isRead)
            return { xml().isStopped() ? HVEntryCut::TooLarge : m_state, {}, end - m_file.data() };
        keepUpTo(end);
        return { HVEntryCut::Done, m_remaining, 0 };
    }

private:
    bool beginEntry(const HVPlainXml::Tag &tag, const char *start) override
    {
        const bool isEntry = tag.name == "hovlet";
        const bool isExact = isEntry && tag.key == m_key;
        const bool isWanted = isExact || (isEntry && hasDoubtfulKey(tag));
        if (isExact && ++m_wanted > 1 && m_file.size() > m_most) {
            m_state = HVEntryCut::Ambiguous;
            return false;
        }
        // A file with two entries for the key serves neither; a third makes no difference.
        m_isLeftOut = !isWanted || (isExact && m_wanted > 2);
        if (!m_isLeftOut)
            return true;
        keepUpTo(start);
        // The texts before and after must not join to form something else, such as "]]>" or a
        // line end.
        if (start[-1] != '>' && start[-1] != '\n' && start[-1] != ' ')
            m_remaining += "<?x ?>";
        xml().stopAt(m_file.data() + m_file.size());
        return true;
    }

    void endEntry() override
    {
        if (!m_isLeftOut)
            return;
        m_isLeftOut = false;
        m_kept = xml().position();
        stopWhenTooLarge();
    }

    /// Ends reading where more would be left than allowed.
    void stopWhenTooLarge()
    {
        const auto remaining = static_cast<size_t>(m_remaining.size());
        const size_t ahead = static_cast<size_t>(m_file.data() + m_file.size() - m_kept);
        xml().stopAt(m_kept + std::min(m_most - std::min(remaining, m_most), ahead));
    }

    void keepUpTo(const char *end)
    {
        m_remaining.append(m_kept, static_cast<int>(end - m_kept));
        m_kept = end;
    }

    Bytes m_file;
    const char *m_kept; // start of what is kept and not yet in m_remaining
    Bytes m_key;
    size_t m_most; // bytes that may be left
    HVEntryCut::State m_state = HVEntryCut::InDoubt;
    int m_wanted = 0;
    bool m_isLeftOut = false; // the entry that is being read
    QByteArray m_remaining;
};

class KeyReader : public EntryReader
{
public:
    using EntryReader::EntryReader;

    std::optional<QStringList> keys()
    {
        return readDocument() ? std::optional<QStringList>(m_keys) : std::nullopt;
    }

private:
    bool beginEntry(const HVPlainXml::Tag &tag, const char * /*start*/) override
    {
        if (tag.name != "hovlet" || tag.keys == 0)
            return true;
        if (tag.keys > 1 || hasDoubtfulKey(tag))
            return false;
        m_keys.append(QString::fromUtf8(tag.key.data(), static_cast<int>(tag.key.size())));
        return true;
    }

    QStringList m_keys;
};

} // namespace

HVEntryCut withoutOtherEntries(const QByteArray &file, const QString &key, int depth, qint64 most)
{
    const QByteArray utf8 = key.toUtf8();
    return EntryCutter(viewOf(file), viewOf(utf8), depth, most).result();
}

std::optional<QStringList> keysOfEntries(const QByteArray &file, int depth)
{
    return KeyReader(viewOf(file), depth).keys();
}

} // namespace Hovlets
