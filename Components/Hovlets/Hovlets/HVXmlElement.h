// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVExport.h"

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <memory>

// Only hosts that construct elements from parsed attributes need the module with Qt's SAX classes.
// Where that is on the include path, this header includes what they need.
#if __has_include(<QXmlAttributes>)
#    include <QXmlAttributes>
#else
class QXmlAttributes;
#endif

namespace Hovlets {

/*!
 * \brief A node of content: one element of a control file, as QML reads it.
 *
 * Hosts need this class to write an index: HVIndex::retrieve() returns a tree of elements. Do not
 * use it as a general XML document: it does not store the order of text and child elements, and
 * toXml() does not reproduce the file.
 *
 * The element tree is the QObject tree: construct a child with its parent, in document order, and
 * delete the root to delete the whole tree. The tag is the object name, by which childElement() and
 * childElementList() find elements. C++ always owns elements, even those that QML has received.
 *
 * GUI thread only. Nothing here fails: missing values read as a null string or a null pointer.
 */
class HOVLETS_EXPORT HVXmlElement : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVXmlElement)

    /// The tag with its namespace prefix; also the object name.
    Q_PROPERTY(QString tagName READ getTagName WRITE setTagName NOTIFY tagNameChanged)

    /// The namespace URI of the tag; empty without one.
    Q_PROPERTY(QString tagNameSpace READ getTagNameSpace WRITE setTagNameSpace NOTIFY
                       tagNameSpaceChanged)

    /// The element's own text. QML can read it, and change it only through appendContent().
    Q_PROPERTY(QString content READ content NOTIFY contentChanged)

public:
    /*!
     * An element with the attributes that a SAX reader delivered, under their qualified names. If a
     * name occurs twice, the later value wins. The parser calls this constructor through the
     * meta-object.
     */
    Q_INVOKABLE explicit HVXmlElement(QObject *parent, const QXmlAttributes &attrs);

    /// An element without tag, text and attributes. A \a parent owns it.
    Q_INVOKABLE explicit HVXmlElement(QObject *parent = nullptr);

    ~HVXmlElement() override;

    /// The tag, such as "hovlet". Unlike that of content(), the name begins with "get", on which
    /// hosts rely.
    [[nodiscard]] QString getTagName() const;

    /// Sets the tag and the object name. Always emits tagNameChanged().
    void setTagName(const QString &tagName);

    /// The namespace URI of the tag.
    [[nodiscard]] QString getTagNameSpace() const;

    /// Sets the namespace URI. Always emits tagNameSpaceChanged().
    void setTagNameSpace(const QString &tagNameSpace);

    /// The element's own text, without that of its children. Pieces between children are joined,
    /// and white space is preserved.
    [[nodiscard]] QString content() const;

    /// Replaces the text. Always emits contentChanged().
    void setContent(const QString &content);

    /*!
     * The first direct child with the tag \a name, else the first such element in the children's
     * subtrees, or null. A null name matches any element.
     */
    Q_INVOKABLE Hovlets::HVXmlElement *childElement(const QString &name) const;

    /// All descendants with the tag \a name in document order; with an empty name, all descendants.
    Q_INVOKABLE QList<QObject *> childElementList(const QString &name);

    /// The value of an attribute, or a null string if it is missing.
    Q_INVOKABLE QString attribute(const QString &name) const;

    /// Whether the element has an attribute.
    Q_INVOKABLE bool hasAttribute(const QString &name) const;

    /// Appends to the text. Always emits contentChanged().
    Q_INVOKABLE void appendContent(const QString &content);

    /*!
     * The tags and attributes of the subtree, one line per tag, indented by \a index spaces.
     *
     * Use it to log the structure: text is left out and nothing is escaped.
     */
    Q_INVOKABLE QString toXml(int index = 0);

    /// The names of all attributes in ascending order.
    [[nodiscard]] QStringList attributeNames() const;

    /// Adds or replaces an attribute. No signal announces it.
    void setAttribute(const QString &name, const QString &value);

Q_SIGNALS:
    /// Emitted on every call of setTagName(), even with an equal value.
    void tagNameChanged();

    /// Emitted on every call of setTagNameSpace(), even with an equal value.
    void tagNameSpaceChanged();

    /// Emitted on every call of setContent() and appendContent(), even with an equal value.
    void contentChanged();

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace Hovlets
