// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace Hovlets {

/*!
 * \brief Reads the tags and texts of XML that needs no parser.
 *
 * It accepts an unambiguous subset: UTF-8, no document type declaration, names in ASCII without
 * prefixes, references to characters of up to four digits and to the five predefined entities.
 * Every byte is checked, because a parser would stop at the first error. Each function that returns
 * bool returns false if the text is not part of the subset, or is past the place set with stopAt().
 * Reading then ends: the position is undefined within the last construct.
 *
 * Nesting is up to the caller. All views are into the text.
 */
class HVPlainXml
{
public:
    using Bytes = std::string_view;

    enum class Construct { StartTag, EndTag, Section };

    struct Tag
    {
        Bytes name;
        Bytes key; ///< the value of the first attribute with that name, as written
        int keys = 0; ///< number of attributes with that name
        bool isClosed = false; ///< has no end tag
    };

    explicit HVPlainXml(Bytes text);

    [[nodiscard]] const char *position() const { return m_rest.data(); }
    [[nodiscard]] bool isAtEnd() const { return m_rest.empty(); }

    /// Bounds the work: texts and sections that end after \a place are an error. In a text,
    /// this is noticed up to 64 KB late.
    void stopAt(const char *place) { m_stop = place; }

    /// Whether the place set with stopAt() is what ended reading.
    [[nodiscard]] bool isStopped() const { return m_isStopped; }

    /// Skips a byte-order mark and the XML declaration.
    bool skipDeclaration();

    /// Skips what may precede and follow the root.
    bool skipOutsideRoot();

    /// Skips text up to the next construct.
    bool skipText() { return skipCharacters('<'); }

    /// What begins here, where a text ended.
    [[nodiscard]] Construct next() const;

    bool readStartTag(Tag &tag);

    /// Reads the end tag of the element with \a name.
    bool readEndTag(Bytes name);

    /// Skips a comment or an instruction, or inside the root also a CDATA section.
    bool skipSection(bool isInRoot);

private:
    [[nodiscard]] bool startsWith(Bytes prefix) const;
    bool mayRead(size_t length);
    bool skipPast(Bytes mark);
    bool skipSpace();
    bool take(char c);
    Bytes takeName();
    bool skipCharacters(char end);
    bool skipReference();
    bool readAttribute(Tag &tag);
    bool skipBetween(Bytes start, Bytes end);

    Bytes m_rest;
    const char *m_stop;
    bool m_isStopped = false;
};

} // namespace Hovlets
