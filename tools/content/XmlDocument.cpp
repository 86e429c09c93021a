// SPDX-License-Identifier: Apache-2.0
#include "XmlDocument.h"

#include "StartTag.h"
#include "XmlReading.h"

#include <HVLimits.h>

#include <algorithm>

namespace HovletsTool {

namespace {

// The parser compares each attribute of an element with all others.
constexpr size_t MaxAttributes = 1000;

// The parser compares each of these with all others.
constexpr int MaxEntities = 10000;
constexpr int MaxAttributeValues = 2000;

constexpr qint64 MaxCharacters =
        qint64 { 4 } * 1024 * 1024; // of a branch; keeps memory within bounds

/// Reads the root element and finds elements that are nested too deeply.
class Overview : public XmlReading
{
public:
    using XmlReading::XmlReading;

    std::optional<XmlDocument::Element> root;
    bool hasTextInRoot = false;
    std::optional<int> tooDeep; // the offset of the first such element

private:
    void startElement(XmlDocument::Element &&element) override
    {
        if (!tooDeep && element.level >= m_deepest)
            tooDeep = element.offset;
        if (element.level == 0)
            root = std::move(element);
    }

    void text(const QString &text) override
    {
        if (openElements() == 1 && !hasTextInRoot)
            hasTextInRoot = !text.trimmed().isEmpty();
    }

    void textRange(XmlDocument::Range) override { }
    void endElement() override { }

    const int m_deepest = Hovlets::HVLimits::current().nestingDepth;
};

/// Collects the elements of one branch after the other.
class Branches : public XmlReading
{
public:
    using Visit = std::function<void(const XmlDocument::Branch &)>;

    Branches(const QByteArray &bytes, bool isConverted, const Visit &visit)
        : XmlReading(bytes, isConverted)
        , m_visit(visit)
    {
    }

    /// Visits a branch that the file does not close.
    void finish()
    {
        if (m_branch.size > 0)
            m_visit(m_branch);
        m_branch = {};
        m_indices.clear();
    }

private:
    void startElement(XmlDocument::Element &&element) override
    {
        if (element.level == 0)
            return;
        ++m_branch.size;
        const bool isKept = m_branch.elements.size() < m_most;
        m_indices.push_back(isKept ? std::optional(m_branch.elements.size()) : std::nullopt);
        if (isKept)
            m_branch.elements.push_back(std::move(element));
    }

    void text(const QString &text) override
    {
        XmlDocument::Element *element = current();
        if (!m_indices.empty())
            m_branch.characters += text.size();
        if (element && m_branch.characters <= MaxCharacters)
            element->text += text;
    }

    void textRange(XmlDocument::Range range) override
    {
        XmlDocument::Element *element = current();
        if (element && m_branch.characters <= MaxCharacters)
            element->textRanges.push_back(range);
    }

    void endElement() override
    {
        if (m_indices.empty())
            return;
        m_indices.pop_back();
        if (m_indices.empty())
            finish();
    }

    /// The innermost open element, unless it is the root or left out.
    XmlDocument::Element *current()
    {
        return m_indices.empty() || !m_indices.back() ? nullptr
                                                      : &m_branch.elements[*m_indices.back()];
    }

    const Visit &m_visit;
    const size_t m_most =
            static_cast<size_t>(std::max(1, Hovlets::HVLimits::current().builtElements));
    XmlDocument::Branch m_branch;
    std::vector<std::optional<size_t>> m_indices; // of the open elements; no value for one left out
};

} // namespace

bool XmlDocument::Element::has(const QString &attribute) const
{
    return std::any_of(attributes.begin(), attributes.end(),
                       [&](const Attribute &each) { return each.name == attribute; });
}

QString XmlDocument::Element::value(const QString &attribute) const
{
    for (const Attribute &each : attributes) {
        if (each.name == attribute)
            return each.value;
    }
    return {};
}

namespace {

/// The reason why the document type declaration of a file would take long to read, and the offset.
struct LargeDeclaration
{
    QString reason;
    int offset;
};

/// Counts what looks like a declaration anywhere in a file that has a document type.
std::optional<LargeDeclaration> findLargeDeclaration(const QByteArray &bytes)
{
    QByteArray letters = bytes;
    letters.replace('\0', QByteArray()); // those of UTF-16, as far as they are in ASCII
    if (!letters.contains("<!DOCTYPE"))
        return std::nullopt;
    const auto position = [&](qsizetype offset) {
        return letters.size() == bytes.size() ? static_cast<int>(offset) : 0;
    };
    int entities = 0;
    for (auto at = letters.indexOf("<!ENTITY"); at >= 0; at = letters.indexOf("<!ENTITY", at + 1)) {
        if (++entities > MaxEntities)
            return LargeDeclaration {
                QStringLiteral("the document type declares more than %1 entities").arg(MaxEntities),
                position(at)
            };
    }
    int values = 0;
    for (auto at = letters.indexOf("<!ATTLIST"); at >= 0;
         at = letters.indexOf("<!ATTLIST", at + 1)) {
        const auto next = letters.indexOf('<', at + 1);
        const auto end = letters.cbegin() + (next < 0 ? letters.size() : next);
        values += static_cast<int>(std::count(letters.cbegin() + at, end, '|'));
        if (values > MaxAttributeValues)
            return LargeDeclaration {
                QStringLiteral("the document type declares more than %1 values of attributes")
                        .arg(MaxAttributeValues),
                position(at)
            };
    }
    return std::nullopt;
}

} // namespace

XmlDocument::XmlDocument(QByteArray bytes)
    : m_bytes(std::move(bytes))
    , m_isConverted(convertToUtf8(m_bytes))
    , m_positions(m_bytes)
{
    if (const std::optional<int> large = findLargeTag(m_bytes, MaxAttributes)) {
        m_problem = Problem::TooLarge;
        m_error = QStringLiteral("an element has more than %1 attributes").arg(MaxAttributes);
        m_errorPosition = position(*large);
        return;
    }
    if (const auto large = findLargeDeclaration(m_bytes)) {
        m_problem = Problem::TooLarge;
        m_error = large->reason;
        m_errorPosition = position(large->offset);
        return;
    }
    readOnce();
}

void XmlDocument::readOnce()
{
    Overview overview(m_bytes, m_isConverted);
    const bool isWellFormed = overview.run();
    m_root = std::move(overview.root);
    m_hasTextInRoot = overview.hasTextInRoot;
    if (overview.tooDeep)
        m_tooDeep = position(*overview.tooDeep);
    if (isWellFormed)
        return;
    const XmlReading::Error &error = overview.error();
    m_problem = Problem::Malformed;
    m_error = error.message;
    m_errorPosition = error.entity ? position(*error.entity) : error.position;
    // The parser takes the line of a start tag from the tree, which is not built here.
    if (error.openElement)
        m_error.replace(QLatin1String(" line 0"),
                        QStringLiteral(" line %1").arg(position(*error.openElement).line));
}

void XmlDocument::forEachBranch(const std::function<void(const Branch &)> &visit) const
{
    if (m_problem == Problem::TooLarge)
        return;
    Branches branches(m_bytes, m_isConverted, visit);
    branches.run();
    branches.finish();
}

Position XmlDocument::position(const Element &element, const QString &attribute) const
{
    const auto place = findAttribute(m_bytes, element.offset, attribute.toUtf8());
    return position(place ? place->name : element.offset);
}

} // namespace HovletsTool
