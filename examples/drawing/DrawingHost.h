// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Hovlets/HVInterface.h>

#include <QtCore/QPointer>
#include <QtWidgets/QWidget>

class HelpWindow;

/*!
 * \brief What the library asks this program: keys, shortcuts, documentation, windows.
 *
 * The library watches the mouse by itself (HVKeyTrackHover), so there is nothing to forward.
 */
class DrawingHost : public Hovlets::HVInterface
{
    Q_OBJECT

public:
    /// \a help stays the caller's and outlives this object.
    DrawingHost(HVContext &context, const QStringList &dataPaths, HelpWindow &help);

    /// Whether pinned popups get a window of the program's, beside \a parent.
    void setPinnedParent(QWidget *parent) { m_pinnedParent = parent; }

    QWidget *createWindow(Hovlets::HVWindowType type) override;
    QString keyForObject(QObject *object) override;
    bool openExternalResource(Hovlets::HVExternalResourceType type,
                              const QString &resource) override;
    QString shortCutForObject(const QString &key, QObject *object,
                              const QString &shortcut) override;

Q_SIGNALS:
    /// \a what, readable, was opened from a popup; or it could not be.
    void opened(const QString &what);

private:
    HelpWindow &m_help;
    QPointer<QWidget> m_pinnedParent;
};
