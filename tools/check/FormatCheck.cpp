// SPDX-License-Identifier: Apache-2.0
#include "FormatCheck.h"

#include "Findings.h"

#include <HVMarkupTags.h>

#include <QtCore/QRegularExpression>
#include <QtCore/QStringList>

#include <algorithm>
#include <numeric>
#include <vector>

namespace HovletsTool {

namespace {

const QStringList &elementNames()
{
    static const QStringList names {
        QStringLiteral("title"), QStringLiteral("p"),       QStringLiteral("text"),
        QStringLiteral("img"),   QStringLiteral("link"),    QStringLiteral("h2"),
        QStringLiteral("h3"),    QStringLiteral("ul"),      QStringLiteral("ol"),
        QStringLiteral("li"),    QStringLiteral("table"),   QStringLiteral("tr"),
        QStringLiteral("th"),    QStringLiteral("td"),      QStringLiteral("pre"),
        QStringLiteral("note"),  QStringLiteral("warning"), QStringLiteral("button")
    };
    return names;
}

/// The attributes that are read of an element, or none if it may have any.
QStringList attributeNames(const QString &element)
{
    if (element == QLatin1String("hovlet"))
        return { QStringLiteral("key"),  QStringLiteral("title"),  QStringLiteral("shortcut"),
                 QStringLiteral("clip"), QStringLiteral("ui"),     QStringLiteral("simple"),
                 QStringLiteral("loop"), QStringLiteral("search"), QStringLiteral("captions") };
    if (element == QLatin1String("img"))
        return { QStringLiteral("src"), QStringLiteral("alt"), QStringLiteral("caption") };
    const bool opens = element == QLatin1String("link") || element == QLatin1String("button");
    return opens ? QStringList(QStringLiteral("href")) : QStringList();
}

/// Tags of HTML that authors may expect in texts. Other words in angle brackets, such as "<file>",
/// are probably meant to be shown.
bool isFromHtml(const QString &tag)
{
    static const QSet<QString> tags {
        QStringLiteral("blockquote"), QStringLiteral("button"), QStringLiteral("center"),
        QStringLiteral("dd"),         QStringLiteral("del"),    QStringLiteral("div"),
        QStringLiteral("dl"),         QStringLiteral("dt"),     QStringLiteral("h1"),
        QStringLiteral("h2"),         QStringLiteral("h3"),     QStringLiteral("h4"),
        QStringLiteral("h5"),         QStringLiteral("h6"),     QStringLiteral("hr"),
        QStringLiteral("img"),        QStringLiteral("ins"),    QStringLiteral("mark"),
        QStringLiteral("pre"),        QStringLiteral("q"),      QStringLiteral("table"),
        QStringLiteral("tbody"),      QStringLiteral("td"),     QStringLiteral("th"),
        QStringLiteral("thead"),      QStringLiteral("tr"),     QStringLiteral("var"),
        QStringLiteral("video")
    };
    return tags.contains(tag.toLower());
}

/// The number of letters to insert, remove or replace, or of neighbours to swap, to turn one name
/// into the other.
int distance(const QString &from, const QString &to)
{
    const auto width = static_cast<size_t>(to.size()) + 1;
    std::vector<std::vector<int>> rows(3, std::vector<int>(width));
    std::iota(rows[0].begin(), rows[0].end(), 0);
    for (int i = 1; i <= from.size(); ++i) {
        std::vector<int> &row = rows[size_t(i) % 3];
        const std::vector<int> &above = rows[size_t(i + 2) % 3];
        const std::vector<int> &aboveThat = rows[size_t(i + 1) % 3];
        row[0] = i;
        for (int j = 1; j <= to.size(); ++j) {
            const auto at = static_cast<size_t>(j);
            const int replaced = above[at - 1] + (from[i - 1] == to[j - 1] ? 0 : 1);
            row[at] = std::min({ row[at - 1] + 1, above[at] + 1, replaced });
            const bool isSwapped =
                    i > 1 && j > 1 && from[i - 1] == to[j - 2] && from[i - 2] == to[j - 1];
            if (isSwapped)
                row[at] = std::min(row[at], aboveThat[at - 2] + 1);
        }
    }
    return rows[size_t(from.size()) % 3].back();
}

/// The name among \a known that \a name is probably a misspelling of, or a null string.
QString meant(const QString &name, const QStringList &known)
{
    constexpr int Longest = 20; // characters
    constexpr int Short = 2; // too few letters to tell a misspelling from another name
    constexpr int Long = 8; // other names rarely differ in two letters only
    for (const QString &candidate : known) {
        const int most = candidate.size() >= Long ? 2 : 1;
        if (candidate.size() > Short && name.size() <= Longest
            && distance(name.toLower(), candidate) <= most)
            return candidate;
    }
    return {};
}

QString suggestion(const QString &name)
{
    return name.isNull() ? QString() : QStringLiteral("; \"%1\" may be meant").arg(name);
}

bool isMarkup(const QString &name)
{
    return Hovlets::markupTagNamed(name).has_value() && !elementNames().contains(name);
}

} // namespace

FormatCheck::FormatCheck(const QString &path, const XmlDocument &document,
                         const QStringList &hostAttributes, FindingList &findings)
    : m_path(path)
    , m_document(document)
    , m_hostAttributes(hostAttributes)
    , m_findings(findings)
{
}

void FormatCheck::check(const XmlDocument::Branch &entry)
{
    checkAttributes(entry.top());
    checkTags(entry.top());
    for (auto element = entry.elements.begin() + 1; element != entry.elements.end(); ++element) {
        if (isMarkup(element->name)) {
            reportMarkup(*element);
        } else {
            checkName(*element);
            checkAttributes(*element);
        }
        checkTags(*element);
    }
}

void FormatCheck::checkName(const XmlDocument::Element &element)
{
    if (elementNames().contains(element.name))
        return;
    add("HV404", element, {},
        QStringLiteral("the element \"%1\" is shown as a paragraph%2")
                .arg(element.name, suggestion(meant(element.name, elementNames()))));
}

/// Hosts may read any attribute, so only those that look misspelt are reported.
void FormatCheck::checkAttributes(const XmlDocument::Element &element)
{
    const QStringList known = attributeNames(element.name);
    for (const auto &[name, value] : element.attributes) {
        const bool isRead = known.contains(name) || m_hostAttributes.contains(name);
        const QString likely = isRead ? QString() : meant(name, known);
        if (!likely.isNull())
            add("HV404", element, name,
                QStringLiteral("the attribute \"%1\" is not shown%2")
                        .arg(name, suggestion(likely)));
    }
}

void FormatCheck::reportMarkup(const XmlDocument::Element &element)
{
    add("HV405", element, {},
        QStringLiteral(
                "the element \"%1\" has no effect, and its words follow the rest of the text")
                .arg(element.name));
}

void FormatCheck::checkTags(const XmlDocument::Element &element)
{
    static const QRegularExpression startTag(QStringLiteral("<([A-Za-z][A-Za-z0-9]*)[\\s/>]"));
    if (!element.text.contains(QLatin1Char('<')))
        return;
    auto tags = startTag.globalMatch(element.text);
    while (tags.hasNext()) {
        const QString name = tags.next().captured(1);
        if (isFromHtml(name))
            add("HV406", element, {},
                QStringLiteral("the tag \"<%1>\" is shown as it is written").arg(name));
    }
}

void FormatCheck::add(const char *code, const XmlDocument::Element &element,
                      const QString &attribute, const QString &message)
{
    constexpr int MostReported = 100; // more would hide other findings
    if (m_reported.size() == MostReported || m_reported.contains(message))
        return;
    m_reported.insert(message);
    m_findings.add(code, m_path, m_document.position(element, attribute), message);
}

} // namespace HovletsTool
