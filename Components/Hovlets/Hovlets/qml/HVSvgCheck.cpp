// SPDX-License-Identifier: Apache-2.0
#include "HVSvgCheck.h"

#include <QtCore/QSet>
#include <QtCore/QXmlStreamReader>

#include <algorithm>
#include <iterator>

namespace Hovlets {

namespace {

constexpr int LargestFile = 1024 * 1024;
constexpr int MostAttributes = 100; // of one element
constexpr int MostNamespaces = 64;
constexpr int MostElements = 10000;
constexpr int DeepestElement = 64; // elements are drawn recursively
constexpr int MostLinks = 256; // from one gradient to another, which are followed recursively
constexpr int LongestStyleSheet = 8192; // each rule is compared with each element
constexpr int LongestText = 20000;

/// Elements that draw or contain shapes and colours, and those in which editors save their data.
bool isHarmless(const QString &element)
{
    static constexpr const char *Names[] = {
        "svg",     "g",           "defs",      "switch",         "a",
        "path",    "rect",        "circle",    "ellipse",        "line",
        "title",   "polyline",    "polygon",   "text",           "tspan",
        "tbreak",  "textArea",    "desc",      "metadata",       "style",
        "stop",    "solidColor",  "RDF",       "linearGradient", "radialGradient",
        "Agent",   "namedview",   "grid",      "guide",          "path-effect",
        "page",    "Work",        "format",    "type",           "creator",
        "date",    "license",     "License",   "permits",        "requires",
        "rights",  "prohibits",   "publisher", "identifier",     "source",
        "subject", "relation",    "language",  "coverage",       "description",
        "Bag",     "contributor", "li",
    };
    return std::any_of(std::begin(Names), std::end(Names),
                       [&](const char *name) { return element == QLatin1String(name); });
}

bool isUtf8(const QByteArray &encoding)
{
    return encoding.isEmpty() || encoding.compare("utf-8", Qt::CaseInsensitive) == 0;
}

/// Whether the bytes are in an encoding in which those of a tag can be found.
bool isAscii(const QByteArray &start)
{
    return !start.contains('\0') && !start.startsWith("\xff\xfe") && !start.startsWith("\xfe\xff");
}

/// Only comments, CDATA sections and a document type without declarations may begin with "<!".
bool declaresNothing(const QByteArray &file)
{
    constexpr int LongestMark = 7;
    for (auto at = file.indexOf("<!"); at >= 0; at = file.indexOf("<!", at + 2)) {
        // The start of a file may end within the mark.
        const QByteArray next = file.mid(at + 2, LongestMark);
        const auto goesOn = [&](const char *mark) {
            return next.startsWith(mark) || QByteArray(mark).startsWith(next);
        };
        if (!goesOn("--") && !goesOn("[CDATA[") && !goesOn("DOCTYPE"))
            return false;
    }
    return true;
}

/// Whether all parts of \a value that a colour or a style refers to are in the file itself.
bool staysInside(const QString &value)
{
    const QLatin1String url("url(");
    for (auto at = value.indexOf(url, 0, Qt::CaseInsensitive); at >= 0;
         at = value.indexOf(url, at + 1, Qt::CaseInsensitive)) {
        auto target = at + url.size();
        while (target < value.size()
               && (value.at(target).isSpace() || value.at(target) == QLatin1Char('"')
                   || value.at(target) == QLatin1Char('\'')))
            ++target;
        if (target == value.size() || value.at(target) != QLatin1Char('#'))
            return false;
    }
    return true;
}

} // namespace

/// Reads a file up to its end or the first problem.
class HVSvgCheck::Reading
{
public:
    explicit Reading(const QByteArray &file)
        : m_reader(file)
    {
    }

    QString problem()
    {
        while (!m_reader.atEnd()) {
            const QString problem = problemOf(m_reader.readNext());
            if (!problem.isEmpty())
                return problem;
        }
        return m_reader.hasError() ? m_reader.errorString() : QString();
    }

    int elements() const { return m_elements; }

private:
    QString problemOf(QXmlStreamReader::TokenType token)
    {
        switch (token) {
        case QXmlStreamReader::StartDocument:
            return isUtf8(m_reader.documentEncoding().toString().toUtf8())
                    ? QString()
                    : QStringLiteral("it is not in UTF-8");
        case QXmlStreamReader::ProcessingInstruction:
            return QStringLiteral("it has processing instructions");
        case QXmlStreamReader::EntityReference:
            return QStringLiteral("it refers to entities");
        case QXmlStreamReader::StartElement:
            return problemOfElement();
        case QXmlStreamReader::EndElement:
            --m_depth;
            m_isInStyle = false;
            return {};
        case QXmlStreamReader::Characters:
            return problemOfText();
        default:
            return {};
        }
    }

    QString problemOfElement()
    {
        const QString name = m_reader.name().toString();
        if (!isHarmless(name))
            return QStringLiteral("it has the element \"%1\", which is not supported").arg(name);
        if (m_elements == 0 && name != QLatin1String("svg"))
            return QStringLiteral("its root element is \"%1\"").arg(name);
        if (++m_elements > MostElements)
            return QStringLiteral("it has more than %1 elements").arg(MostElements);
        if (++m_depth > DeepestElement)
            return QStringLiteral("its elements nest deeper than %1 levels").arg(DeepestElement);
        m_isInStyle = name == QLatin1String("style");
        return problemOfAttributes(name);
    }

    QString problemOfAttributes(const QString &element)
    {
        const QXmlStreamAttributes attributes = m_reader.attributes();
        for (const QXmlStreamAttribute &attribute : attributes) {
            const QString value = attribute.value().toString();
            const bool isLink = attribute.name() == QLatin1String("href");
            // The target of <a> is not followed.
            if (isLink && element != QLatin1String("a") && !isEarlierGradient(element, value))
                return QStringLiteral("it refers to \"%1\"").arg(value.left(LongestName));
            if (!staysInside(value))
                return QStringLiteral("it refers to other files");
        }
        // Later, because an element may not refer to itself.
        for (const QXmlStreamAttribute &attribute : attributes) {
            const QString value = attribute.value().toString();
            if (attribute.name() == QLatin1String("id") && !addName(value))
                return QStringLiteral("it has the ID \"%1\" twice").arg(value.left(LongestName));
        }
        return {};
    }

    /// References to earlier elements cannot form a circle, because all IDs differ.
    bool isEarlierGradient(const QString &element, const QString &target)
    {
        return element.endsWith(QLatin1String("Gradient")) && target.startsWith(QLatin1Char('#'))
                && m_names.contains(target.mid(1)) && ++m_links <= MostLinks;
    }

    bool addName(const QString &name)
    {
        const auto known = m_names.size();
        m_names.insert(name);
        return m_names.size() > known;
    }

    QString problemOfText()
    {
        if (m_reader.isWhitespace())
            return {};
        const QString text = m_reader.text().toString();
        int &length = m_isInStyle ? m_styleLength : m_textLength;
        length += static_cast<int>(text.size());
        if (length > (m_isInStyle ? LongestStyleSheet : LongestText))
            return QStringLiteral("its texts or style sheets are too long");
        // Rules with "@" import other style sheets, and escapes can hide them.
        const bool isPlain = !m_isInStyle
                || (staysInside(text) && !text.contains(QLatin1Char('@'))
                    && !text.contains(QLatin1Char('\\')));
        return isPlain ? QString() : QStringLiteral("its style sheet refers to other files");
    }

    static constexpr int LongestName = 40; // in a message

    QXmlStreamReader m_reader;
    QSet<QString> m_names;
    int m_elements = 0;
    int m_depth = 0;
    int m_links = 0;
    int m_textLength = 0;
    int m_styleLength = 0;
    bool m_isInStyle = false;
};

HVSvgCheck::HVSvgCheck(const QByteArray &file)
{
    if (file.size() > LargestFile)
        m_problem = QStringLiteral("it is larger than %1 bytes").arg(LargestFile);
    else if (!isQuicklyRead(file))
        m_problem = QStringLiteral("it is not in UTF-8, or it has declarations, too many "
                                   "attributes, or too many namespaces");
    if (!m_problem.isEmpty())
        return;
    Reading reading(file);
    m_problem = reading.problem();
    m_elements = reading.elements();
}

bool HVSvgCheck::isQuicklyRead(const QByteArray &start)
{
    if (!isAscii(start) || !declaresNothing(start) || start.count("xmlns") > MostNamespaces)
        return false;
    // A tag ends before the next "<", even if its values contain ">".
    int attributes = 0;
    return std::all_of(start.begin(), start.end(), [&attributes](char byte) {
        if (byte == '<')
            attributes = 0;
        return byte != '=' || ++attributes <= MostAttributes;
    });
}

} // namespace Hovlets
