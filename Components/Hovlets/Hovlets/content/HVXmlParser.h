// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QList>
#include <QXmlDefaultHandler>
#include <QXmlSimpleReader>

#include <memory>

class QMetaObject;
class QObject;

namespace Hovlets {

/*!
 * \brief Builds a tree of QObjects from an XML document.
 *
 * Each tag maps to a class, whose objects are made through their meta-object. A class needs an
 * invokable constructor taking (QObject *parent, QXmlAttributes attributes), or else one taking
 * (QObject *parent), in which case every XML attribute must name a writable property. It may have
 * the properties "tagName" and "tagNameSpace" and an invokable appendContent(QString), which
 * receives character data.
 *
 * A callback decides, element by element, what is built, so a caller can keep one entry of a large
 * file. A parse ends early, with one "Fatal error at" line in Qt's debug output, where the document
 * is not well-formed or meets one of the HVLimits.
 *
 * One parser reads any number of documents in turn, on one thread at a time.
 */
class HVXmlParser : public QXmlSimpleReader, private QXmlDefaultHandler
{
    Q_DISABLE_COPY_MOVE(HVXmlParser)

public:
    /// What is built of an element; the bits combine. A result without any of 2, 4 and 8 acts as 1.
    enum Generate {
        GenerateAsk = 1, ///< build the element, ask again for each child
        GenerateAll = 2, ///< build the element and its whole subtree without asking
        SkipElement = 4, ///< do not build the element; its children are still considered
        SkipChildren = 8 ///< build nothing below the element and do not ask there
    };

    /// Answers with bits of Generate for an element of the given qualified name.
    using Callback = int (*)(const QString &qName, const QXmlAttributes &attributes,
                             void *userData);

    /// Without a \a callback every element is built. \a userData is passed on, never read.
    explicit HVXmlParser(Callback callback = nullptr, void *userData = nullptr);

    /*!
     * Deletes what has no other owner: objects built below a skipped element, and objects of a
     * parse that stopped early, also those that read() returned.
     */
    ~HVXmlParser() override;

    void registerElement(const QString &tag, const QMetaObject *metaObject);
    void unregisterElement(const QString &tag);

    /// The class registered for \a tag, or null.
    const QMetaObject *metaObjectForElement(const QString &tag) const;

    /// The class for all other tags, HVXmlElement at first; never null.
    void setDefaultElement(const QMetaObject *metaObject);
    const QMetaObject *defaultElement() const;

    /*!
     * Parses and returns the top-level objects, which the caller owns; partial after an error.
     *
     * After an error, destroy the parser only once the objects are done with.
     */
    QList<QObject *> read(const QXmlInputSource *source);
    QList<QObject *> read(const QXmlInputSource &source);

    /// Whether every element that the last read() opened was also closed.
    bool isClosed() const;

    /*!
     * The limit that ended the last read(), as in "elements nest deeper than 512 levels". A null
     * string when it met none.
     */
    QString limitMet() const;

    bool startElement(const QString &namespaceURI, const QString &localName, const QString &qName,
                      const QXmlAttributes &atts) override;
    bool endElement(const QString &namespaceURI, const QString &localName,
                    const QString &qName) override;
    bool characters(const QString &ch) override;
    bool ignorableWhitespace(const QString &ch) override;

    bool fatalError(const QXmlParseException &exception) override;

private:
    // The reader reports here what the limits depend on.
    bool startDTD(const QString &name, const QString &publicId, const QString &systemId) override;
    bool endDTD() override;
    bool internalEntityDecl(const QString &name, const QString &value) override;
    bool startEntity(const QString &name) override;
    QString errorString() const override;

    class NamespaceFilter;
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace Hovlets
