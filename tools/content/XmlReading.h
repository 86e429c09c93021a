// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "XmlDocument.h"

#include <libxml/parser.h>

namespace HovletsTool {

/// Converts a file from the 8-bit encoding that its XML declaration names. Returns false, and
/// changes nothing, for a file in UTF-8 and for one that cannot be converted.
[[nodiscard]] bool convertToUtf8(QByteArray &bytes);

/*!
 * \brief One pass of the XML parser over a file. Subclasses receive the elements.
 *
 * Entities come only from the file itself, as in the library.
 */
class XmlReading
{
public:
    /*!
     * \param bytes outlive the object
     * \param isConverted whether they are in UTF-8, whatever the XML declaration says
     */
    XmlReading(const QByteArray &bytes, bool isConverted);
    virtual ~XmlReading();
    Q_DISABLE_COPY_MOVE(XmlReading)

    /// Reads the whole file. Returns whether it is well-formed.
    bool run();

    struct Error
    {
        QString message;
        Position position; // inside the entity, if there is one
        std::optional<int> openElement; // the offset of the element that holds the error
        std::optional<int> entity; // the offset of the reference to the entity that holds the error
    };

    /// The first error.
    [[nodiscard]] const Error &error() const { return m_error; }

protected:
    virtual void startElement(XmlDocument::Element &&element) = 0;
    virtual void text(const QString &text) = 0;
    /// The bytes of the text since the last tag or comment.
    virtual void textRange(XmlDocument::Range range) = 0;
    virtual void endElement() = 0;

    [[nodiscard]] int openElements() const { return static_cast<int>(m_open.size()); }

private:
    static XmlReading &readingOf(void *context);
    static void handleStart(void *context, const xmlChar *name, const xmlChar **attributes);
    static void handleEnd(void *context, const xmlChar *name);
    static void handleText(void *context, const xmlChar *text, int length);
    static void handleComment(void *context, const xmlChar *text);
    static void handleError(void *context, const char *message, ...);
    static void ignore(void *context, const char *message, ...);

    [[nodiscard]] int readOffset() const;
    [[nodiscard]] bool isInEntity(const void *context) const { return context != m_context; }
    [[nodiscard]] int startOf(const void *context, const char *sign) const;
    void finishText(int end, int read);

    const QByteArray &m_bytes;
    bool m_isConverted;
    xmlParserCtxt *m_context = nullptr; // of the file; the text of an entity has another one
    std::vector<int> m_open; // the offsets of the open elements
    int m_read = 0; // the end of the last tag or comment
    bool m_isInText = false; // whether text follows it
    Error m_error;
};

} // namespace HovletsTool
