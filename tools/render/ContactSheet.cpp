// SPDX-License-Identifier: Apache-2.0
#include "ContactSheet.h"

#include <QtCore/QtMath>
#include <QtGui/QFontMetrics>
#include <QtGui/QPainter>
#include <QtGui/QPalette>
#include <QtWidgets/QApplication>

#include <algorithm>
#include <cmath>

namespace HovletsTool {

namespace {

constexpr int Gap = 16; // device-independent pixels

struct Column
{
    int x = Gap;
    int width = 0;
    int height = Gap;
    std::vector<size_t> pictures;
};

/// In device-independent pixels.
QSize sizeOf(const QImage &picture)
{
    const QSizeF size = QSizeF(picture.size()) / picture.devicePixelRatio();
    return { qCeil(size.width()), qCeil(size.height()) };
}

/// Puts each picture into the shortest column so far, to keep the bottom of the sheet even.
std::vector<Column> columnsOf(const std::vector<NamedPicture> &pictures, int nameHeight)
{
    const auto count = static_cast<size_t>(
            std::max(1.0, std::ceil(std::sqrt(static_cast<double>(pictures.size())))));
    std::vector<Column> columns(count);
    for (size_t index = 0; index < pictures.size(); ++index) {
        Column &column = *std::min_element(
                columns.begin(), columns.end(),
                [](const Column &a, const Column &b) { return a.height < b.height; });
        const QImage &picture = pictures[index].picture;
        const QSize size = sizeOf(picture);
        column.width = std::max(column.width, size.width());
        column.height += nameHeight + size.height() + Gap;
        column.pictures.push_back(index);
    }
    int x = Gap;
    for (Column &column : columns) {
        column.x = x;
        x += column.width > 0 ? column.width + Gap : 0;
    }
    return columns;
}

} // namespace

QImage contactSheet(const std::vector<NamedPicture> &pictures)
{
    const QFontMetrics metrics(QApplication::font());
    const int nameHeight = metrics.height() + Gap / 4;
    const std::vector<Column> columns = columnsOf(pictures, nameHeight);
    const Column &last = columns.back();
    const int height =
            std::max_element(columns.begin(), columns.end(), [](const Column &a, const Column &b) {
                return a.height < b.height;
            })->height;
    const qreal scale = pictures.empty() ? 1 : pictures.front().picture.devicePixelRatio();
    const QSize size(last.x + std::max(last.width, Gap) + Gap, height);
    QImage sheet(size * scale, QImage::Format_RGB32);
    sheet.setDevicePixelRatio(scale);
    sheet.fill(QApplication::palette().color(QPalette::Window));
    QPainter painter(&sheet);
    painter.setPen(QApplication::palette().color(QPalette::WindowText));
    for (const Column &column : columns) {
        int y = Gap;
        for (const size_t index : column.pictures) {
            const auto &[name, picture] = pictures[index];
            painter.drawText(column.x, y + metrics.ascent(),
                             metrics.elidedText(name, Qt::ElideRight, sizeOf(picture).width()));
            y += nameHeight;
            painter.drawImage(column.x, y, picture);
            y += sizeOf(picture).height() + Gap;
        }
    }
    return sheet;
}

} // namespace HovletsTool
