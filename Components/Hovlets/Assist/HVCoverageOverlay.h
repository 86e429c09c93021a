// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QRect>
#include <QtCore/QVector>
#include <QtWidgets/QWidget>

namespace Hovlets {

/// The outline of one control, in the coordinates of its window.
struct HVOutline
{
    QRect area;
    bool covered = false;

    bool operator==(const HVOutline &other) const
    {
        return area == other.area && covered == other.covered;
    }
};

/*!
 * \brief Lies over a window and outlines its controls.
 *
 * Events go through it to what is below. Missing controls are told from covered ones by the stroke,
 * too: not everybody sees the difference between red and green.
 */
class HVCoverageOverlay : public QWidget
{
    Q_OBJECT

public:
    explicit HVCoverageOverlay(QWidget *window);

    void setOutlines(const QVector<HVOutline> &outlines);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QVector<HVOutline> m_outlines;
};

bool isOverlay(const QObject *object);

/// Whether a child widget more does no harm to it.
bool takesOverlay(const QWidget *window);

} // namespace Hovlets
