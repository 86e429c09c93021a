// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtQml/qqml.h>

class QQuickItem;

namespace Hovlets {

class HVQuickScene;

/*!
 * \brief The attached object "Hovlet", which makes an item of Qt Quick a control with content.
 *
 * \code
 * Button { Hovlet.key: "save" }
 * \endcode
 *
 * GUI thread only.
 */
class HVHovlet : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVHovlet)

    /// The content key. While it is empty, the host is asked, which by default returns the item's
    /// object name.
    Q_PROPERTY(QString key READ key WRITE setKey NOTIFY keyChanged)

    /// The current shortcut, shown instead of that in the content; empty by default.
    Q_PROPERTY(QString shortcut READ shortcut WRITE setShortcut NOTIFY shortcutChanged)

    /// Whether the item is a control; true by default. Otherwise the items around it are asked.
    Q_PROPERTY(bool enabled READ isEnabled WRITE setEnabled NOTIFY enabledChanged)

public:
    /// For \a object, which owns it. Prints a warning if that is not an item, or if the program has
    /// no QApplication.
    explicit HVHovlet(QObject *object);

    [[nodiscard]] QString key() const;
    void setKey(const QString &key);

    [[nodiscard]] QString shortcut() const;
    void setShortcut(const QString &shortcut);

    [[nodiscard]] bool isEnabled() const;
    void setEnabled(bool enabled);

    /// The attached object of \a item if it is enabled, else null.
    static const HVHovlet *of(const QObject *item);

    static HVHovlet *qmlAttachedProperties(QObject *object);

Q_SIGNALS:
    void keyChanged();
    void shortcutChanged();
    void enabledChanged();

private:
    void enterWindow();
    void leaveWhileHidden();

    QQuickItem *m_item; // the parent; null if that is not an item
    QPointer<HVQuickScene> m_scene; // of the item's window
    QString m_key;
    QString m_shortcut;
    bool m_isEnabled = true;
};

} // namespace Hovlets

QML_DECLARE_TYPEINFO(Hovlets::HVHovlet, QML_HAS_ATTACHED_PROPERTIES)
