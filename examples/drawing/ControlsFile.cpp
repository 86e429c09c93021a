// SPDX-License-Identifier: Apache-2.0
#include "ControlsFile.h"

#include "DrawingHost.h"

#include <QtCore/QSaveFile>
#include <QtWidgets/QWidget>

namespace {

constexpr int Period = 100; // ms

} // namespace

ControlsFile::ControlsFile(DrawingHost &host, QWidget &window, const QString &path)
    : m_host(host)
    , m_window(window)
    , m_path(path)
{
    connect(&m_timer, &QTimer::timeout, this, &ControlsFile::update);
    m_timer.start(Period);
}

QByteArray ControlsFile::list() const
{
    QByteArray lines;
    const QList<QWidget *> widgets = m_window.findChildren<QWidget *>();
    for (QWidget *widget : widgets) {
        const QString key = m_host.keyForObject(widget);
        const bool part = widget->objectName().startsWith(QLatin1String("qt_"));
        if (key.isEmpty() || part || !widget->isVisible())
            continue;
        const QPoint centre = widget->mapToGlobal(widget->rect().center());
        lines += key.toUtf8() + ' ' + QByteArray::number(centre.x()) + ' '
                + QByteArray::number(centre.y()) + '\n';
    }
    return lines;
}

void ControlsFile::update()
{
    const QByteArray lines = list();
    if (lines == m_written)
        return;
    QSaveFile file(m_path);
    if (!file.open(QIODevice::WriteOnly))
        return;
    file.write(lines);
    if (file.commit())
        m_written = lines;
}
