// SPDX-License-Identifier: Apache-2.0
#include "UiTexts.h"

#include "ControlFile.h"
#include "KnownLocale.h"
#include "ReadFile.h"
#include "ToolError.h"

#include <QtCore/QLocale>
#include <QtCore/QXmlStreamReader>
#include <QtGui/QTextDocument>
#include <QtGui/QTextDocumentFragment>

#include <algorithm>

namespace HovletsTool {

namespace {

constexpr qint64 MaxSize = qint64 { 64 } * 1024 * 1024; // bytes, far more than any form has

void refuseMistakes(const QXmlStreamReader &reader, const QString &path)
{
    if (reader.hasError())
        throw ToolError(QStringLiteral("%1:%2:%3: %4")
                                .arg(path)
                                .arg(reader.lineNumber())
                                .arg(reader.columnNumber())
                                .arg(reader.errorString()));
}

/// The member for the property \a name, or null for other properties.
QString *textOf(UiEntry &entry, const QString &name)
{
    if (name == QLatin1String("toolTip"))
        return &entry.toolTip;
    if (name == QLatin1String("statusTip"))
        return &entry.statusTip;
    return name == QLatin1String("whatsThis") ? &entry.whatsThis : nullptr;
}

/// Reads the string of a property. Returns a null string for a property of another type, and for a
/// string without visible text.
QString readString(QXmlStreamReader &reader)
{
    QString text;
    while (reader.readNextStartElement()) {
        if (reader.name() == QLatin1String("string"))
            text = reader.readElementText();
        else
            reader.skipCurrentElement();
    }
    return plainText(text).isEmpty() ? QString() : text;
}

void readProperty(QXmlStreamReader &reader, const QString &name, UiEntry &entry)
{
    if (QString *text = textOf(entry, name))
        *text = readString(reader);
    else
        reader.skipCurrentElement();
}

/// Throws for a file whose root element is not that of a form.
[[noreturn]] void refuseOther(const QXmlStreamReader &reader, const QString &path)
{
    refuseMistakes(reader, path);
    if (reader.name() == QLatin1String("TS"))
        throw ToolError(QStringLiteral("%1 is a translation file; put --ts before it").arg(path));
    throw ToolError(QStringLiteral("%1 is not a Qt Designer form").arg(path));
}

bool hasText(const UiEntry &entry)
{
    return !entry.toolTip.isEmpty() || !entry.statusTip.isEmpty() || !entry.whatsThis.isEmpty();
}

} // namespace

std::vector<UiEntry> readForm(const QString &path)
{
    QXmlStreamReader reader(readFile(path, MaxSize));
    if (!reader.readNextStartElement() || reader.name() != QLatin1String("ui"))
        refuseOther(reader, path);
    std::vector<UiEntry> all;
    constexpr size_t NoObject = size_t(-1);
    // The open elements: for each object the index of its entry. The items and columns of a widget
    // are not objects; their tips do not belong to the widget.
    std::vector<size_t> open { NoObject };
    QString context;
    while (!open.empty()) {
        if (!reader.readNextStartElement()) {
            open.pop_back();
            continue;
        }
        const auto element = reader.name();
        const QString name = reader.attributes().value(QLatin1String("name")).toString();
        if (element == QLatin1String("widget") || element == QLatin1String("action")) {
            open.push_back(all.size());
            all.push_back({ name, context });
        } else if (element == QLatin1String("class") && context.isEmpty()) {
            context = reader.readElementText();
        } else if (element == QLatin1String("property") && open.back() != NoObject) {
            readProperty(reader, name, all[open.back()]);
        } else {
            open.push_back(NoObject);
        }
    }
    while (!reader.atEnd()) // anything but white space is a mistake
        reader.readNext();
    refuseMistakes(reader, path);
    all.erase(std::remove_if(
                      all.begin(), all.end(),
                      [](const UiEntry &entry) { return entry.name.isEmpty() || !hasText(entry); }),
              all.end());
    return all;
}

void addEntry(std::vector<UiEntry> &entries, const UiEntry &entry)
{
    const auto same = std::find_if(entries.begin(), entries.end(),
                                   [&](const UiEntry &other) { return other.name == entry.name; });
    if (same == entries.end()) {
        entries.push_back(entry);
        return;
    }
    for (QString UiEntry::*text : { &UiEntry::toolTip, &UiEntry::statusTip, &UiEntry::whatsThis }) {
        if (((*same).*text).isEmpty())
            (*same).*text = entry.*text;
    }
}

QString plainText(const QString &text)
{
    QString plain =
            Qt::mightBeRichText(text) ? QTextDocumentFragment::fromHtml(text).toPlainText() : text;
    return plain.remove(QChar::ObjectReplacementCharacter).simplified();
}

UiTranslation::UiTranslation(const QString &path)
{
    QXmlStreamReader reader(readFile(path, MaxSize));
    QString context, source;
    while (!reader.atEnd()) {
        reader.readNext();
        if (!reader.isStartElement())
            continue;
        const auto name = reader.name();
        if (name == QLatin1String("TS")) {
            m_locale = reader.attributes().value(QLatin1String("language")).toString();
        } else if (name == QLatin1String("name")) {
            context = reader.readElementText();
        } else if (name == QLatin1String("source")) {
            source = reader.readElementText();
        } else if (name == QLatin1String("translation")) {
            const bool isFinished = !reader.attributes().hasAttribute(QLatin1String("type"));
            const QString text = reader.readElementText(QXmlStreamReader::IncludeChildElements);
            if (isFinished && !text.isEmpty())
                m_texts[{ context, source }] = text;
        }
    }
    refuseMistakes(reader, path);
    if (m_locale.isEmpty())
        throw ToolError(QStringLiteral("%1 is not a translation file, or it names no language; its "
                                       "root element must be <TS language=\"…\">")
                                .arg(path));
    if (!isKnownLocale(m_locale))
        throw ToolError(QStringLiteral("%1: unknown language \"%2\"; use a locale such as de_DE")
                                .arg(path, m_locale));
    m_locale = QLocale(m_locale).name();
}

void UiTranslation::add(const UiTranslation &other)
{
    m_texts.insert(other.m_texts.begin(), other.m_texts.end()); // keeps existing ones
}

QString UiTranslation::translate(const QString &context, const QString &text) const
{
    const auto found = m_texts.find({ context, text });
    return found == m_texts.end() ? text : found->second;
}

bool UiTranslation::hasAny(const UiEntry &entry) const
{
    const auto has = [&](const QString &text) {
        return m_texts.count({ entry.context, text }) > 0;
    };
    return has(entry.toolTip) || has(entry.statusTip) || has(entry.whatsThis);
}

} // namespace HovletsTool
