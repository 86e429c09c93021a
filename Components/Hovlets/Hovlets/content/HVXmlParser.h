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
 * Each tag maps to a class, which is instantiated through its meta-object. A class needs an
 * invokable constructor that takes (QObject *parent, QXmlAttributes attributes), or one that takes
 * (QObject *parent); then every XML attribute must name a writable property. It may have the
 * properties "tagName" and "tagNameSpace" and an invokable appendContent(QString), which receives
 * character data.
 *
 * A callback decides for each element whether it is built, so a caller can keep one entry of a
 * large file. A parse ends early, with one "Fatal error at" line in Qt's debug output, if the
 * document is not well-formed or meets one of the HVLimits.
 *
 * One parser can read any number of documents, one after the other, on one thread at a time.
 */
class HVXmlParser : public QXmlSimpleReader, private QXmlDefaultHandler
{
    Q_DISABLE_COPY_MOVE(HVXmlParser)

public:
    /// Selects what to build for an element; the bits combine. A result without 2, 4 and 8 acts as
    /// 1.
    enum Generate {
        GenerateAsk = 1, ///< build the element, ask again for each child
        GenerateAll = 2, ///< build the element and its whole subtree without asking
        SkipElement = 4, ///< do not build the element; its children are still considered
        SkipChildren = 8 ///< build nothing below the element and do not ask there
    };

    /// Returns bits of Generate for an element with the given qualified name.
    using Callback = int (*)(const QString &qName, const QXmlAttributes &attributes,
                             void *userData);

    /// Without a \a callback, every element is built. \a userData is only passed on.
    explicit HVXmlParser(Callback callback = nullptr, void *userData = nullptr);

    /*!
     * Deletes everything without another owner: objects built below a skipped element, and objects
     * of a parse that stopped early, even those that read() returned.
     */
    ~HVXmlParser() override;

    void registerElement(const QString &tag, const QMetaObject *metaObject);
    void unregisterElement(const QString &tag);

    /// The class registered for \a tag, or null.
    const QMetaObject *metaObjectForElement(const QString &tag) const;

    /// The class for all other tags, by default HVXmlElement; never null.
    void setDefaultElement(const QMetaObject *metaObject);
    const QMetaObject *defaultElement() const;

    /*!
     * Parses and returns the top-level objects, which the caller owns. After an error, they are
     * incomplete, and the destructor may delete them: use them before it runs.
     */
    QList<QObject *> read(const QXmlInputSource *source);
    QList<QObject *> read(const QXmlInputSource &source);

    /// Whether the last read() closed every element that it opened.
    bool isClosed() const;

    /*!
     * The limit that ended the last read(), such as "elements nest deeper than 512 levels"; a null
     * string if none did.
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
    // Reports from the reader that the limits depend on.
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
