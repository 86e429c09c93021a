// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "TextPositions.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <functional>
#include <optional>
#include <vector>

namespace HovletsTool {

/*!
 * \brief An XML file, read element by element, with the place of each.
 *
 * Files may be large and hostile. The time to read one is linear in its size, and only one branch
 * is in memory at a time. A file that is not well-formed is read up to the mistake.
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
        int offset = 0; // of its "<", or of the "&" of the entity that holds it, in bytes
        std::vector<Attribute> attributes;
        QString text; // not that of child elements; only the beginning of a very long one
        std::vector<Range> textRanges; // the bytes of the text

        [[nodiscard]] bool has(const QString &attribute) const;
        [[nodiscard]] QString value(const QString &attribute) const;
    };

    /// An element directly below the root, and all elements inside it in document order.
    struct Branch
    {
        std::vector<Element> elements;
        qint64 size = 0; // the number of elements, including those left out of the list above
        qint64 characters = 0; // in all texts, including those left out

        [[nodiscard]] const Element &top() const { return elements.front(); }
    };

    enum class Problem { None, Malformed, TooLarge };

    /// Reads the bytes of a file, or of its beginning.
    explicit XmlDocument(QByteArray bytes);

    /// The file in UTF-8. All offsets are in these bytes.
    [[nodiscard]] const QByteArray &bytes() const { return m_bytes; }

    /// Whether the file is in another encoding.
    [[nodiscard]] bool isConverted() const { return m_isConverted; }

    /// Null for a file without any element.
    [[nodiscard]] const Element *root() const { return m_root ? &*m_root : nullptr; }

    /// Whether there is text other than white space directly in the root element.
    [[nodiscard]] bool hasTextInRoot() const { return m_hasTextInRoot; }

    /// Why the file cannot be read to its end.
    [[nodiscard]] Problem problem() const { return m_problem; }
    [[nodiscard]] bool isWellFormed() const { return m_problem == Problem::None; }
    [[nodiscard]] QString error() const { return m_error; }
    [[nodiscard]] Position errorPosition() const { return m_errorPosition; }

    /// The place of the first element that is nested more deeply than the library reads.
    [[nodiscard]] std::optional<Position> tooDeep() const { return m_tooDeep; }

    /*!
     * Calls \a visit for each branch in document order, the last one possibly cut off at a mistake.
     *
     * A branch lists no more elements than the library builds for one entry, and no more text than
     * anybody reads.
     */
    void forEachBranch(const std::function<void(const Branch &)> &visit) const;

    [[nodiscard]] Position position(int offset) const { return m_positions.at(offset); }

    /// The place of the attribute, or of the element when an entity holds the attribute.
    [[nodiscard]] Position position(const Element &element, const QString &attribute) const;

private:
    void readOnce();

    QByteArray m_bytes;
    bool m_isConverted; // from another encoding
    TextPositions m_positions;
    std::optional<Element> m_root;
    bool m_hasTextInRoot = false;
    Problem m_problem = Problem::None;
    QString m_error;
    Position m_errorPosition;
    std::optional<Position> m_tooDeep;
};

} // namespace HovletsTool
