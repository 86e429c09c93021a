// SPDX-License-Identifier: Apache-2.0
#include "FloodFill.h"

#include <vector>

namespace {

QRgb *row(QImage &image, int y)
{
    return reinterpret_cast<QRgb *>(image.scanLine(y));
}

/// Adds the leftmost pixel of every run in the row \a y between \a left and \a right.
void addRuns(QImage &image, int y, int left, int right, QRgb old, std::vector<QPoint> &seeds)
{
    if (y < 0 || y >= image.height())
        return;
    const QRgb *pixels = row(image, y);
    bool inRun = false;
    for (int x = left; x <= right; ++x) {
        const bool matches = pixels[x] == old;
        if (matches && !inRun)
            seeds.emplace_back(x, y);
        inRun = matches;
    }
}

} // namespace

bool floodFill(QImage &image, const QPoint &start, const QColor &color)
{
    if (!image.rect().contains(start))
        return false;
    const QRgb old = row(image, start.y())[start.x()];
    const QRgb filled = qPremultiply(color.rgba());
    if (old == filled)
        return false;

    std::vector<QPoint> seeds { start };
    while (!seeds.empty()) {
        const QPoint seed = seeds.back();
        seeds.pop_back();
        QRgb *pixels = row(image, seed.y());
        if (pixels[seed.x()] != old)
            continue;
        int left = seed.x();
        int right = seed.x();
        while (left > 0 && pixels[left - 1] == old)
            --left;
        while (right + 1 < image.width() && pixels[right + 1] == old)
            ++right;
        std::fill(pixels + left, pixels + right + 1, filled);
        addRuns(image, seed.y() - 1, left, right, old, seeds);
        addRuns(image, seed.y() + 1, left, right, old, seeds);
    }
    return true;
}
