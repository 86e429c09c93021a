// SPDX-License-Identifier: Apache-2.0
#include "FloodFill.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace {

// Per channel: enough for the smoothed edges of strokes, too little for another colour.
constexpr int Tolerance = 32;

class Filler
{
public:
    Filler(QImage &image, const QPoint &start)
        : m_image(image)
        , m_old(rowOf(start.y())[start.x()])
        , m_seen(size_t(image.width()) * size_t(image.height()))
        , m_seeds { start }
    {
    }

    void fill(QRgb color)
    {
        while (!m_seeds.empty()) {
            const QPoint seed = m_seeds.back();
            m_seeds.pop_back();
            if (belongs(seed.x(), seed.y()))
                fillRun(seed, color);
        }
    }

private:
    QRgb *rowOf(int y) { return reinterpret_cast<QRgb *>(m_image.scanLine(y)); }
    size_t indexOf(int x, int y) const { return size_t(y) * size_t(m_image.width()) + size_t(x); }

    bool belongs(int x, int y)
    {
        if (m_seen[indexOf(x, y)])
            return false;
        const QRgb color = rowOf(y)[x];
        return std::abs(qRed(color) - qRed(m_old)) <= Tolerance
                && std::abs(qGreen(color) - qGreen(m_old)) <= Tolerance
                && std::abs(qBlue(color) - qBlue(m_old)) <= Tolerance
                && std::abs(qAlpha(color) - qAlpha(m_old)) <= Tolerance;
    }

    /// Fills the run around \a seed and stores the runs that touch it above and below.
    void fillRun(const QPoint &seed, QRgb color)
    {
        const int y = seed.y();
        int left = seed.x();
        int right = seed.x();
        while (left > 0 && belongs(left - 1, y))
            --left;
        while (right + 1 < m_image.width() && belongs(right + 1, y))
            ++right;
        std::fill(rowOf(y) + left, rowOf(y) + right + 1, color);
        for (int x = left; x <= right; ++x)
            m_seen[indexOf(x, y)] = true;
        addRuns(y - 1, left, right);
        addRuns(y + 1, left, right);
    }

    /// Stores the leftmost pixel of every run in row \a y between \a left and \a right.
    void addRuns(int y, int left, int right)
    {
        if (y < 0 || y >= m_image.height())
            return;
        bool inRun = false;
        for (int x = left; x <= right; ++x) {
            const bool matches = belongs(x, y);
            if (matches && !inRun)
                m_seeds.emplace_back(x, y);
            inRun = matches;
        }
    }

    QImage &m_image;
    QRgb m_old;
    std::vector<bool> m_seen;
    std::vector<QPoint> m_seeds;
};

} // namespace

bool floodFill(QImage &image, const QPoint &start, const QColor &color)
{
    if (!image.rect().contains(start))
        return false;
    if (image.pixel(start) == color.rgba())
        return false;
    Filler(image, start).fill(qPremultiply(color.rgba()));
    return true;
}
