// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QXmlAttributes>

#include <memory>

namespace Hovlets {

/*!
 * \brief A node of content: one element of a control file, as QML reads it.
 *
 * The element tree is the QObject tree: deleting an element deletes its subtree. The tag is the
 * object name, which is what the look-ups of children go by. C++ owns every element; the look-ups
 * tell the QML engine so. GUI thread only.
 */
class HVXmlElement : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVXmlElement)
    Q_PROPERTY(QString tagName READ getTagName WRITE setTagName NOTIFY tagNameChanged)
    Q_PROPERTY(QString tagNameSpace READ getTagNameSpace WRITE setTagNameSpace NOTIFY
                       tagNameSpaceChanged)
    Q_PROPERTY(QString content READ content NOTIFY contentChanged)

public:
    /// Takes \a attrs by their qualified names; a later duplicate wins.
    Q_INVOKABLE explicit HVXmlElement(QObject *parent = nullptr,
                                      const QXmlAttributes &attrs = QXmlAttributes());
    ~HVXmlElement() override;

    QString getTagName() const;
    void setTagName(const QString &tagName);

    QString getTagNameSpace() const;
    void setTagNameSpace(const QString &tagNameSpace);

    /// The element's own character data, pieces joined, white space kept.
    QString content() const;
    void setContent(const QString &content);

    /*!
     * The first direct child named \a name, else the first in the children's subtrees, or null.
     *
     * A null name matches any element.
     */
    Q_INVOKABLE Hovlets::HVXmlElement *childElement(const QString &name) const;

    /// All descendants named \a name, in document order; an empty name matches every one.
    Q_INVOKABLE QList<QObject *> childElementList(const QString &name);

    /// The value of the attribute, or a null string when it is absent.
    Q_INVOKABLE QString attribute(const QString &name) const;
    Q_INVOKABLE bool hasAttribute(const QString &name) const;

    Q_INVOKABLE void appendContent(const QString &content);

    /*!
     * The subtree's elements and attributes, a line per tag, indented by \a index spaces.
     *
     * It shows the structure for logs and QML: text is left out and nothing is escaped, so it
     * does not reproduce the file.
     */
    Q_INVOKABLE QString toXml(int index = 0);

    /// All attribute names, ascending.
    QStringList attributeNames() const;

    /// Inserts or overwrites. No signal tells of attributes.
    void setAttribute(const QString &name, const QString &value);

Q_SIGNALS:
    void tagNameChanged();
    void tagNameSpaceChanged();
    void contentChanged();

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace Hovlets
