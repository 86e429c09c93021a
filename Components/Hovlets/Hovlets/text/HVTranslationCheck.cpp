// SPDX-License-Identifier: Apache-2.0
#include "HVTranslationCheck.h"

#include "HVByteView.h"

#include <QtCore/QtEndian>

#include <algorithm>
#include <vector>

namespace Hovlets {

namespace {

constexpr char Magic[] = "\x3c\xb8\x64\x18\xca\xef\x9c\x95\xcd\x21\x1c\xbf\x60\xa1\xbd\xdd";
constexpr qint64 MagicSize = 16;
constexpr quint32 NoString = 0xffffffff; // the length of a null string

enum Section : quint8 { Contexts = 0x2f, Hashes = 0x42, Messages = 0x69, Dependencies = 0x96 };

enum TagByte : quint8 {
    End = 1,
    Translation = 3,
    Obsolete = 5,
    SourceText = 6,
    Context = 7,
    Comment = 8
};

struct Sections
{
    HVByteView contexts;
    HVByteView hashes;
    HVByteView messages;
    bool hasDependencies = false;
    bool areWhole = true;
};

/// Finds the sections as QTranslator does: the last of a kind counts.
Sections sectionsOf(const HVByteView &file)
{
    constexpr qint64 HeaderSize = 5;
    Sections sections;
    for (qint64 at = MagicSize; at < file.size() - HeaderSize;) {
        const quint8 tag = file.byte(at);
        const qint64 size = file.big32(at + 1);
        at += HeaderSize;
        if (tag == 0 || size == 0)
            break;
        if (!file.has(at, size)) {
            sections.areWhole = false;
            break;
        }
        const HVByteView section = file.from(at).left(size);
        at += size;
        if (tag == Contexts)
            sections.contexts = section;
        else if (tag == Hashes)
            sections.hashes = section;
        else if (tag == Messages)
            sections.messages = section;
        else if (tag == Dependencies)
            sections.hasDependencies = true;
    }
    return sections;
}

enum class Result {
    Sound,
    Damaged,
    TooManyAlike, ///< QTranslator would search too long for one text.
};

// QTranslator searches a list of contexts for that of each text, name by name. A list that lrelease
// writes has a few names.
constexpr int MostContexts = 1000;

// QTranslator compares a text with all messages of its hash, part by part. Those of thousands of
// contexts that contain the same text fit.
constexpr int MostParts = 20000;

/// The lists of names in a table of contexts. Lists may share names.
class NameLists
{
public:
    explicit NameLists(const HVByteView &contexts)
        : m_contexts(contexts)
        , m_lengths(std::min(size_t(contexts.size()), LastStart + MostNames * LongestName))
    {
    }

    /// Whether the list at that position ends inside the table and is short.
    Result check(qint64 start)
    {
        m_path.clear();
        qint64 at = start;
        for (; lengthAt(at) == 0; at += 1 + m_contexts.byte(at)) {
            if (!m_contexts.has(at, 1))
                return Result::Damaged;
            if (m_path.size() == MostNames)
                return Result::TooManyAlike;
            m_path.push_back(at);
            if (m_contexts.byte(at) == 0)
                break;
        }
        quint16 length = lengthAt(at);
        if (m_path.size() + length > MostNames)
            return Result::TooManyAlike;
        for (auto name = m_path.crbegin(); name != m_path.crend(); ++name)
            m_lengths[size_t(*name)] = ++length;
        return Result::Sound;
    }

private:
    static constexpr size_t MostNames = MostContexts + 1; // with the empty one at the end
    static constexpr size_t LongestName = 256;
    static constexpr size_t LastStart = 2 + 4 * 65535;

    quint16 lengthAt(qint64 at) const
    {
        return size_t(at) < m_lengths.size() ? m_lengths[size_t(at)] : 0;
    }

    HVByteView m_contexts;
    std::vector<quint16> m_lengths; // of known lists, by position; 0 elsewhere
    std::vector<qint64> m_path;
};

/// Whether each bucket of the table leads to a sound list of names.
Result checkContexts(const HVByteView &contexts)
{
    if (contexts.size() == 0)
        return Result::Sound;
    const qint64 buckets = contexts.big16(0);
    const qint64 names = 2 + 2 * buckets;
    if (buckets == 0 || !contexts.has(0, names))
        return Result::Damaged;
    NameLists lists(contexts);
    for (qint64 bucket = 0; bucket < buckets; ++bucket) {
        const qint64 offset = contexts.big16(2 + 2 * bucket);
        const Result result = offset != 0 ? lists.check(names + 2 * offset) : Result::Sound;
        if (result != Result::Sound)
            return result;
    }
    return Result::Sound;
}

/// A message in the section of messages.
struct Message
{
    qint64 end = -1; // -1 if it is damaged
    qint64 parts = 0;
};

Message messageAt(const HVByteView &messages, qint64 at)
{
    for (qint64 parts = 1; messages.has(at, 1); ++parts) {
        const quint8 tag = messages.byte(at++);
        if (tag == End)
            return { at, parts };
        if (!messages.has(at, 4))
            return {};
        const quint32 length = messages.big32(at);
        at += 4;
        switch (tag) {
        case Obsolete:
            continue;
        case Translation:
            // An untranslated plural form, at which QTranslator stops reading the message.
            if (length == NoString)
                return { at, parts };
            break;
        case SourceText:
        case Context:
        case Comment:
            break;
        default:
            return {};
        }
        if (!messages.has(at, length))
            return {};
        at += length;
    }
    return {};
}

/// Whether each hash leads to a message, messages do not overlap, and those of one hash are short.
Result checkMessages(const HVByteView &hashes, const HVByteView &messages)
{
    constexpr qint64 HashSize = 8;
    if (hashes.size() % HashSize != 0)
        return Result::Damaged;
    std::vector<quint16> parts(size_t(messages.size())); // of messages, by position; 0 elsewhere
    for (qint64 at = 0; at < hashes.size(); at += HashSize) {
        const quint32 offset = hashes.big32(at + 4);
        if (!messages.has(offset, 1))
            return Result::Damaged;
        parts[offset] = 1;
    }
    qint64 end = 0;
    for (qint64 at = 0; at < messages.size(); ++at) {
        if (parts[size_t(at)] == 0)
            continue;
        const Message message = messageAt(messages, at);
        if (at < end || message.end < 0)
            return Result::Damaged;
        if (message.parts > MostParts)
            return Result::TooManyAlike;
        parts[size_t(at)] = quint16(message.parts);
        end = message.end;
    }
    qint64 alike = 0;
    for (qint64 at = 0; at < hashes.size(); at += HashSize) {
        if (at > 0 && hashes.big32(at) != hashes.big32(at - HashSize))
            alike = 0;
        alike += parts[hashes.big32(at + 4)];
        if (alike > MostParts)
            return Result::TooManyAlike;
    }
    return Result::Sound;
}

QString problemOf(Result result, const QString &tooMany)
{
    switch (result) {
    case Result::Damaged:
        return QStringLiteral("damaged");
    case Result::TooManyAlike:
        return tooMany;
    case Result::Sound:
        break;
    }
    return {};
}

bool hasMagic(const QByteArray &file)
{
    return file.startsWith(QByteArray::fromRawData(Magic, MagicSize));
}

Sections sectionsOf(const QByteArray &file)
{
    return sectionsOf(HVByteView(file));
}

} // namespace

QString translationProblem(const QByteArray &file)
{
    if (!hasMagic(file))
        return QStringLiteral("not a translation file");
    const Sections sections = sectionsOf(file);
    if (sections.hasDependencies)
        return QStringLiteral("it includes other files");
    if (!sections.areWhole)
        return problemOf(Result::Damaged, {});
    const QString problem =
            problemOf(checkContexts(sections.contexts),
                      QStringLiteral("more than %1 contexts with the same hash").arg(MostContexts));
    if (!problem.isNull())
        return problem;
    return problemOf(
            checkMessages(sections.hashes, sections.messages),
            QStringLiteral("more than %1 parts of messages with the same hash").arg(MostParts));
}

QByteArray completedTranslation(const QByteArray &file)
{
    const HVByteView contexts = hasMagic(file) ? sectionsOf(file).contexts : HVByteView();
    if (contexts.size() == 0)
        return file;
    constexpr int EndSize = 1;
    QByteArray header(5, static_cast<char>(Contexts));
    qToBigEndian(static_cast<quint32>(contexts.size() + EndSize), header.data() + 1);
    return file + header + QByteArray(contexts.data(), static_cast<int>(contexts.size()))
            + QByteArray(EndSize, '\0');
}

} // namespace Hovlets
