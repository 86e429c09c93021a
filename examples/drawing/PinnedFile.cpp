// SPDX-License-Identifier: Apache-2.0
#include "PinnedFile.h"

#include "DrawingHost.h"

#include <QtCore/QEvent>
#include <QtCore/QFile>
#include <QtCore/QSaveFile>

PinnedFile::PinnedFile(DrawingHost &host, QWidget &window, const QString &path)
    : m_host(host)
    , m_path(path)
{
    QFile file(path);
    if (file.open(QIODevice::ReadOnly))
        host.restoreState(file.readAll());
    window.installEventFilter(this);
}

bool PinnedFile::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() == QEvent::Close) {
        QSaveFile file(m_path);
        if (file.open(QIODevice::WriteOnly)) {
            file.write(m_host.saveState());
            file.commit();
        }
    }
    return QObject::eventFilter(object, event);
}
