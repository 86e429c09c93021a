// SPDX-License-Identifier: Apache-2.0
#include "UiTexts.h"

#include "Program.h"

#include <QtCore/QFile>
#include <QtCore/QLocale>
#include <QtCore/QXmlStreamReader>
#include <QtGui/QTextDocument>
#include <QtGui/QTextDocumentFragment>

#include <algorithm>

namespace {

void open(QFile &file)
{
    if (!file.open(QIODevice::ReadOnly))
        throw ToolError(
                QStringLiteral("%1 cannot be read: %2").arg(file.fileName(), file.errorString()));
}

void refuseMistakes(const QXmlStreamReader &reader, const QFile &file)
{
    if (reader.hasError())
        throw ToolError(QStringLiteral("%1:%2:%3: %4")
                                .arg(file.fileName())
                                .arg(reader.lineNumber())
                                .arg(reader.columnNumber())
                                .arg(reader.errorString()));
}

/// Where the text of the property \a name goes; null for other properties.
QString *textOf(UiEntry &entry, const QString &name)
{
    if (name == QLatin1String("toolTip"))
        return &entry.toolTip;
    if (name == QLatin1String("statusTip"))
        return &entry.statusTip;
    return name == QLatin1String("whatsThis") ? &entry.whatsThis : nullptr;
}

/// Inside a property: its string, or nothing when the property is of another type.
QString readString(QXmlStreamReader &reader)
{
    QString text;
    while (reader.readNextStartElement()) {
        if (reader.name() == QLatin1String("string"))
            text = reader.readElementText();
        else
            reader.skipCurrentElement();
    }
    return text;
}

bool hasText(const UiEntry &entry)
{
    return !entry.toolTip.isEmpty() || !entry.statusTip.isEmpty() || !entry.whatsThis.isEmpty();
}

} // namespace

std::vector<UiEntry> readForm(const QString &path)
{
    QFile file(path);
    open(file);
    QXmlStreamReader reader(&file);
    if (!reader.readNextStartElement() || reader.name() != QLatin1String("ui")) {
        refuseMistakes(reader, file);
        throw ToolError(QStringLiteral("%1 is no file of Qt Designer").arg(path));
    }
    std::vector<UiEntry> all;
    std::vector<size_t> open; // the objects around the place, as indices of the former
    QString context;
    while (!reader.atEnd()) {
        reader.readNext();
        const bool isObject = reader.name() == QLatin1String("widget")
                || reader.name() == QLatin1String("action");
        if (reader.isEndElement() && isObject) {
            open.pop_back();
        } else if (reader.isStartElement() && isObject) {
            open.push_back(all.size());
            all.push_back({ reader.attributes().value(QLatin1String("name")).toString(), context });
        } else if (reader.isStartElement() && reader.name() == QLatin1String("class")
                   && context.isEmpty()) {
            context = reader.readElementText();
        } else if (reader.isStartElement() && reader.name() == QLatin1String("property")
                   && !open.empty()) {
            const QString name = reader.attributes().value(QLatin1String("name")).toString();
            if (QString *text = textOf(all[open.back()], name))
                *text = readString(reader);
        }
    }
    refuseMistakes(reader, file);
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
    const QString plain =
            Qt::mightBeRichText(text) ? QTextDocumentFragment::fromHtml(text).toPlainText() : text;
    return plain.simplified();
}

UiTranslation::UiTranslation(const QString &path)
{
    QFile file(path);
    open(file);
    QXmlStreamReader reader(&file);
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
                m_texts.insert({ context, source }, text);
        }
    }
    refuseMistakes(reader, file);
    if (m_locale.isEmpty())
        throw ToolError(QStringLiteral("%1 is no translation file, or names no language: its root "
                                       "is to be <TS language=\"…\">")
                                .arg(path));
    m_locale = QLocale(m_locale).name();
}

QString UiTranslation::translate(const QString &context, const QString &text) const
{
    return m_texts.value({ context, text }, text);
}

bool UiTranslation::hasAny(const UiEntry &entry) const
{
    return m_texts.contains({ entry.context, entry.toolTip })
            || m_texts.contains({ entry.context, entry.statusTip })
            || m_texts.contains({ entry.context, entry.whatsThis });
}
