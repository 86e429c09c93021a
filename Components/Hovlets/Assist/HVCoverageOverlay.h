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

    [[nodiscard]] bool operator==(const HVOutline &other) const
    {
        return area == other.area && covered == other.covered;
    }
};

/*!
 * \brief Covers a window and outlines its controls.
 *
 * Events pass through it to the widgets below. Missing and covered controls differ in the stroke as
 * well as in the colour, because not everybody can distinguish red from green.
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

/// Whether the window can have an additional child widget.
bool takesOverlay(const QWidget *window);

} // namespace Hovlets
