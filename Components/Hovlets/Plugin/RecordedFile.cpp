// SPDX-License-Identifier: Apache-2.0
#include "RecordedFile.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QSaveFile>
#include <QtCore/QVector>
#include <QtCore/QXmlStreamReader>

namespace Hovlets {

namespace {

constexpr QLatin1String Indent("    ");

/// A part of the file's text.
struct Span
{
    qint64 begin = 0;
    qint64 end = 0;
};

/// Where an entry is in the file.
struct EntrySpan
{
    Span whole;
    QVector<QPair<QString, QString>> attributes;
    QVector<Span> others; // children beside title and paragraphs
    FoundEntry found;
};

struct FileSpans
{
    std::optional<EntrySpan> entry;
    qint64 rootEnd = -1; // where the root's end tag begins
    QString error;
};

bool isParagraph(const QXmlStreamReader &reader)
{
    return reader.name() == QLatin1String("p") || reader.name() == QLatin1String("text");
}

/// Where the next token begins. After text, the reader has already consumed the "<" that ended it.
qint64 nextToken(const QXmlStreamReader &reader, const QString &text)
{
    const qint64 offset = reader.characterOffset();
    const bool isConsumed = offset > 0 && text.at(int(offset) - 1) == QLatin1Char('<');
    return isConsumed ? offset - 1 : offset;
}

/// Reads the children of an entry whose start tag was read.
void readChildren(QXmlStreamReader &reader, const QString &file, EntrySpan &entry)
{
    qint64 before = nextToken(reader, file);
    for (reader.readNext(); !reader.atEnd() && !reader.isEndElement(); reader.readNext()) {
        const bool isElement = reader.isStartElement();
        const bool isText = isElement && isParagraph(reader);
        const bool isTitle = isElement && reader.name() == QLatin1String("title");
        const bool isOther = (isElement && !isText && !isTitle) || reader.isComment();
        const QString text = isElement
                ? reader.readElementText(QXmlStreamReader::IncludeChildElements).trimmed()
                : QString();
        if (isText)
            entry.found.entry.paragraphs += text;
        if (isTitle)
            entry.found.entry.title = text;
        if (isOther)
            entry.others.append({ before, nextToken(reader, file) });
        before = nextToken(reader, file);
    }
}

FileSpans spansOf(const QString &text, const QString &key)
{
    FileSpans spans;
    QXmlStreamReader reader(text);
    QString locale;
    qint64 before = 0;
    int depth = 0;
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isStartElement()) {
            const QXmlStreamAttributes attributes = reader.attributes();
            const QString name = reader.name().toString();
            if (++depth == 1)
                locale = attributes.value(QLatin1String("locale")).toString();
            const bool isWanted = depth == 2 && name == QLatin1String("hovlet") && !spans.entry
                    && attributes.value(QLatin1String("key")) == key;
            if (isWanted) {
                EntrySpan entry;
                entry.whole.begin = before;
                entry.found.locale = locale;
                entry.found.line = int(text.left(int(before)).count(QLatin1Char('\n'))) + 1;
                entry.found.entry.key = key;
                for (const QXmlStreamAttribute &attribute : attributes)
                    entry.attributes.append(
                            { attribute.qualifiedName().toString(), attribute.value().toString() });
                entry.found.entry.title = attributes.value(QLatin1String("title")).toString();
                readChildren(reader, text, entry);
                --depth;
                entry.whole.end = nextToken(reader, text);
                spans.entry = entry;
            }
        } else if (reader.isEndElement() && --depth == 0) {
            spans.rootEnd = before;
        }
        before = nextToken(reader, text);
    }
    if (reader.hasError())
        spans.error = reader.errorString();
    return spans;
}

QString attributeText(const QString &name, const QString &value)
{
    return QStringLiteral(" %1=\"%2\"").arg(name, value.toHtmlEscaped());
}

/// A paragraph; one with markup is in a CDATA section, as content needs it.
QString paragraphText(const QString &paragraph)
{
    if (!paragraph.contains(QLatin1Char('<')))
        return paragraph.toHtmlEscaped();
    QString text = paragraph;
    text.replace(QLatin1String("]]>"), QLatin1String("]]]]><![CDATA[>"));
    return QStringLiteral("<![CDATA[%1]]>").arg(text);
}

/// The entry as text; keeps what \a old has beside title and paragraphs.
QString entryText(const RecordedEntry &entry, const EntrySpan *old, const QString &file)
{
    QString text = QStringLiteral("<hovlet") + attributeText(QStringLiteral("key"), entry.key)
            + attributeText(QStringLiteral("title"), entry.title);
    if (old) {
        for (const auto &attribute : old->attributes) {
            if (attribute.first != QLatin1String("key")
                && attribute.first != QLatin1String("title"))
                text += attributeText(attribute.first, attribute.second);
        }
    }
    text += QLatin1Char('>');
    const QString line = QLatin1Char('\n') + QLatin1String(Indent) + QLatin1String(Indent);
    for (const QString &paragraph : entry.paragraphs)
        text += line + QStringLiteral("<p>%1</p>").arg(paragraphText(paragraph));
    if (old) {
        for (const Span &other : old->others)
            text += line + file.mid(int(other.begin), int(other.end - other.begin)).trimmed();
    }
    return text + QLatin1Char('\n') + Indent + QStringLiteral("</hovlet>");
}

/// The text of a file in UTF-8. Returns a message on failure.
QString readText(const QString &path, QString &text)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("%1 cannot be read: %2").arg(path, file.errorString());
    text = QString::fromUtf8(file.readAll());
    if (text.contains(QChar::ReplacementCharacter))
        return QStringLiteral("%1 is not in UTF-8").arg(path);
    return {};
}

QString writeText(const QString &path, const QString &text)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0 || !file.commit())
        return QStringLiteral("%1 cannot be written: %2").arg(path, file.errorString());
    return {};
}

} // namespace

RecordedFile::RecordedFile(const QString &path)
    : m_path(path)
{
}

QString RecordedFile::create(const QString &locale) const
{
    if (QFileInfo::exists(m_path))
        return {};
    const QString folder = QFileInfo(m_path).absolutePath();
    if (!QDir().mkpath(folder))
        return QStringLiteral("the folder %1 cannot be created").arg(folder);
    return writeText(m_path,
                     QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                    "<hovlets locale=\"%1\" search=\"Default\">\n"
                                    "</hovlets>\n")
                             .arg(locale.toHtmlEscaped()));
}

std::optional<FoundEntry> RecordedFile::find(const QString &key) const
{
    QString text;
    if (key.isEmpty() || !readText(m_path, text).isEmpty())
        return std::nullopt;
    const FileSpans spans = spansOf(text, key);
    return spans.entry ? std::make_optional(spans.entry->found) : std::nullopt;
}

QString RecordedFile::write(const RecordedEntry &entry) const
{
    QString text;
    const QString failure = readText(m_path, text);
    if (!failure.isEmpty())
        return failure;
    const FileSpans spans = spansOf(text, entry.key);
    if (!spans.error.isEmpty() || spans.rootEnd < 0)
        return QStringLiteral("%1 is not well-formed: %2").arg(m_path, spans.error);
    const QString written = entryText(entry, spans.entry ? &*spans.entry : nullptr, text);
    if (spans.entry) {
        const Span &whole = spans.entry->whole;
        text.replace(int(whole.begin), int(whole.end - whole.begin), written);
    } else {
        text.insert(int(spans.rootEnd), QLatin1Char('\n') + Indent + written + QLatin1Char('\n'));
    }
    // Nothing fits into a root without an end tag, and XML does not allow all characters.
    const FileSpans made = spansOf(text, entry.key);
    if (!made.error.isEmpty() || !made.entry)
        return QStringLiteral("%1 cannot hold the entry: %2").arg(m_path, made.error);
    return writeText(m_path, text);
}

} // namespace Hovlets
