// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <vector>

namespace HovletsTool {

/// A place in a file. Lines and columns start at 1.
struct Position
{
    int line = 1;
    int column = 1;
};

/*!
 * \brief The elements of an XML file and their places, in document order.
 *
 * A file that is not well-formed is read up to the mistake.
 */
class XmlDocument
{
public:
    struct Range
    {
        int begin, end;
    };

    struct Attribute
    {
        QString name;
        QString value;
    };

    struct Element
    {
        QString name;
        int level = 0; // 0 for the root element
        int offset = 0; // of its "<", in bytes
        std::vector<Attribute> attributes;
        QString text; // not that of child elements
        std::vector<Range> textRanges; // the bytes of the text

        [[nodiscard]] bool has(const QString &attribute) const;
        [[nodiscard]] QString value(const QString &attribute) const;
    };

    /// Throws a ToolError when the file cannot be read.
    explicit XmlDocument(const QString &file);
    /// Reads the bytes of a file, or of its beginning.
    explicit XmlDocument(const QByteArray &bytes);

    [[nodiscard]] const QByteArray &bytes() const { return m_bytes; }
    [[nodiscard]] const std::vector<Element> &elements() const { return m_elements; }
    [[nodiscard]] bool isWellFormed() const { return m_error.isEmpty(); }
    [[nodiscard]] QString error() const { return m_error; }
    [[nodiscard]] Position errorPosition() const { return m_errorPosition; }

    /// The first element that is nested more deeply than the library reads, or null.
    [[nodiscard]] const Element *tooDeep() const;

    [[nodiscard]] Position position(int offset) const;

    /// The place of the attribute, or of the element when an entity holds the attribute.
    [[nodiscard]] Position position(const Element &element, const QString &attribute) const;

private:
    friend struct XmlHandlers;

    QByteArray m_bytes;
    std::vector<int> m_lines; // the offset of each line
    std::vector<Element> m_elements;
    std::vector<size_t> m_open;
    int m_read = 0; // the end of the last tag or comment
    bool m_isInText = false; // whether text follows it
    QString m_error;
    Position m_errorPosition;
};

} // namespace HovletsTool
