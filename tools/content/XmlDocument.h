// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <vector>

namespace HovletsTool {

/// Where something stands in a file; both count from 1.
struct Position
{
    int line = 1;
    int column = 1;
};

/*!
 * \brief The elements of an XML file with their places, in document order.
 *
 * Of a file that is not well-formed it holds what stands before the mistake.
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
        int level = 0; // the root's is 0
        int offset = 0; // of its "<", in bytes
        std::vector<Attribute> attributes;
        QString text; // directly in it
        std::vector<Range> textRanges; // where that is written

        bool has(const QString &attribute) const;
        QString value(const QString &attribute) const;
    };

    /// Throws a ToolError when the file cannot be read.
    explicit XmlDocument(const QString &file);
    /// Of the bytes of a file, or of its beginning.
    explicit XmlDocument(const QByteArray &bytes);

    const QByteArray &bytes() const { return m_bytes; }
    const std::vector<Element> &elements() const { return m_elements; }
    bool isWellFormed() const { return m_error.isEmpty(); }
    QString error() const { return m_error; }
    Position errorPosition() const { return m_errorPosition; }

    /// The first element below more others than the library reads, or null.
    const Element *tooDeep() const;

    Position position(int offset) const;

    /// Of the attribute, or of the element when its start tag does not spell the name out.
    Position position(const Element &element, const QString &attribute) const;

private:
    friend struct XmlHandlers;

    QByteArray m_bytes;
    std::vector<int> m_lines; // where each begins
    std::vector<Element> m_elements;
    std::vector<size_t> m_open;
    int m_read = 0; // the end of the last tag or comment
    bool m_isInText = false; // since then
    QString m_error;
    Position m_errorPosition;
};

} // namespace HovletsTool
