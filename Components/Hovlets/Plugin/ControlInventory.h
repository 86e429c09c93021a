// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QJsonArray>
#include <QtCore/QObject>
#include <QtCore/QSet>
#include <QtCore/QString>
#include <QtCore/QTimer>

class QWidget;

namespace Hovlets {

class AttachedHost;

/*!
 * \brief Collects the controls of a program and what it says about them, in a JSON file.
 *
 * Controls of windows and menus that the program creates later are added; those of closed windows
 * stay. `hovlets import --from-running` reads the file, which docs/attach.md describes. GUI thread
 * only.
 */
class ControlInventory : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(ControlInventory)

public:
    /// Writes \a file whenever a control was added. The host must outlive the object.
    ControlInventory(AttachedHost &host, const QString &file);

    /// Collects the last controls.
    ~ControlInventory() override;

private:
    void collect();
    void collectIn(QWidget *widget);
    void write();

    AttachedHost &m_host;
    QString m_file;
    QJsonArray m_controls;
    QSet<QString> m_keys; // of m_controls
    QJsonArray::size_type m_written = -1; // the number of controls in the file
    QTimer m_timer;
};

} // namespace Hovlets
