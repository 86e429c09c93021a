// SPDX-License-Identifier: Apache-2.0
#include "HVEntryTexts.h"

#include "HVEntryContent.h"

#include <QtCore/QStringList>

#include <algorithm>
#include <limits>
#include <utility>

namespace Hovlets {

namespace {

/// The lines of \a text without the indentation that they have in common, and without empty lines
/// at both ends.
QStringList withoutIndentation(const QString &text)
{
    QStringList lines = text.split(QLatin1Char('\n'));
    const auto isBlank = [](const QString &line) { return line.trimmed().isEmpty(); };
    while (!lines.isEmpty() && isBlank(lines.constFirst()))
        lines.removeFirst();
    while (!lines.isEmpty() && isBlank(lines.constLast()))
        lines.removeLast();
    int common = std::numeric_limits<int>::max();
    for (const QString &line : std::as_const(lines)) {
        const auto first =
                std::find_if_not(line.begin(), line.end(), [](QChar c) { return c.isSpace(); });
        if (first != line.end())
            common = std::min(common, static_cast<int>(first - line.begin()));
    }
    for (QString &line : lines)
        line = isBlank(line) ? QString() : line.mid(common);
    return lines;
}

} // namespace

HVEntryTexts::HVEntryTexts(QString key, HVEntryServices &services, bool topics,
                           const HVLimits &limits)
    : m_key(std::move(key))
    , m_services(services)
    , m_longest(HVDisplayBudget::mostWritten(limits))
    , m_budget(limits)
{
    m_rules.topics = topics;
    m_rules.fill = [&services](const QString &text) { return services.interpolate(text); };
}

QString HVEntryTexts::allText(const HVXmlElement &element)
{
    QString text;
    appendAllText(text, element);
    return simplified(text);
}

void HVEntryTexts::appendAllText(QString &text, const HVXmlElement &element)
{
    append(text, element.content());
    forEachChild(element, [&](const HVXmlElement &child) {
        append(text, QStringLiteral(" "));
        appendAllText(text, child);
    });
}

void HVEntryTexts::append(QString &text, const QString &more) const
{
    appendSimplified(text, more, m_longest);
}

/// The part of a text, or of its translation, that the budget contains. A text too long to be
/// shown whole is not translated.
QString HVEntryTexts::taken(const QString &source)
{
    if (source.size() <= m_longest && m_budget.hasWritten()) {
        const QString translation = m_services.translate(source, m_key);
        const QString text = simplified(m_budget.takeWritten(translation));
        if (!text.isEmpty())
            return text;
    }
    return m_budget.takeWritten(source);
}

HVShownText HVEntryTexts::plain(const QString &text)
{
    const QString source = simplified(text);
    if (source.isEmpty())
        return {};
    return shownPlainText(m_services.interpolate(taken(source)), m_budget);
}

HVShownText HVEntryTexts::formatted(const QString &source)
{
    if (source.isEmpty())
        return {};
    const QString text = taken(source);
    return isMarkup(text) ? shownMarkup(text, m_rules, m_budget)
                          : shownPlainText(m_services.interpolate(text), m_budget);
}

HVShownText HVEntryTexts::code(const QString &text)
{
    const QStringList lines =
            withoutIndentation(m_services.interpolate(m_budget.takeWritten(text)));
    HVShownTextWriter writer(m_budget, false);
    bool isFirst = true;
    for (QString line : lines) {
        line.replace(QLatin1Char('\t'), QStringLiteral("    ")); // laying out tabs takes long
        if (!std::exchange(isFirst, false) && !(m_budget.takeElement() && writer.write(u"\n"))) {
            writer.cut();
            break;
        }
        writer.write(line);
    }
    writer.endText();
    return writer.take(HVShownText::Format::Plain);
}

} // namespace Hovlets
