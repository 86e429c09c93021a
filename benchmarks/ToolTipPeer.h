// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>
#include <QtQuickWidgets/QQuickWidget>

/*!
 * \brief A substitute for "hovletView" with all functions that a user interface calls. They do
 * nothing.
 */
class ToolTipServices : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool stayOpen MEMBER m_stayOpen NOTIFY stayOpenChanged)
    Q_PROPERTY(bool reserved MEMBER m_reserved NOTIFY reservedChanged)
    Q_PROPERTY(QObject *content MEMBER m_content NOTIFY contentChanged)
    Q_PROPERTY(bool documentationAvailable MEMBER m_documentationAvailable NOTIFY
                       documentationAvailableChanged)
    Q_PROPERTY(QString resourceDirectory MEMBER m_resourceDirectory NOTIFY resourceDirectoryChanged)

public:
    explicit ToolTipServices(QObject *parent);

    void setContent(QObject *content);

    Q_INVOKABLE void setItemCursor(QObject *, const QString &, const QString &) { }
    Q_INVOKABLE void debugLog(const QString &) { }
    Q_INVOKABLE bool openExternalResource(const QString &) { return false; }
    Q_INVOKABLE QString interpolate(const QString &text) { return text; }
    Q_INVOKABLE void setOverrideCursor(const QString &) { }
    Q_INVOKABLE void restoreOverrideCursor() { }
    Q_INVOKABLE QString translate(const QString &text, const QString &) { return text; }
    Q_INVOKABLE QString findResource(const QString &path) { return path; }

Q_SIGNALS:
    void stayOpenChanged();
    void reservedChanged();
    void contentChanged();
    void documentationAvailableChanged();
    void resourceDirectoryChanged();

private:
    bool m_stayOpen = false;
    bool m_reserved = false;
    QObject *m_content = nullptr;
    bool m_documentationAvailable = false;
    QString m_resourceDirectory = QStringLiteral("Resources");
};

/*!
 * \brief The minimum that shows a user interface in a tooltip window: a bare QQuickWidget.
 *
 * Its QML sees the same context properties as in the library's popup.
 */
class ToolTipPeer : public QQuickWidget
{
    Q_OBJECT

public:
    ToolTipPeer();

    /// Shows \a content, which is not owned, with the user interface \a qml.
    void show(QObject *content, const QString &folder, const QUrl &qml, const QPoint &position);

private:
    ToolTipServices m_services;
};
