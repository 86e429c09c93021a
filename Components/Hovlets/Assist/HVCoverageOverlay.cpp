// SPDX-License-Identifier: Apache-2.0
#include "HVCoverageOverlay.h"

#include <QtGui/QPainter>
#include <QtGui/QPen>

namespace Hovlets {

namespace {

constexpr int Stroke = 2; // pixels, inside the control
constexpr QRgb CoveredColor = qRgb(0x1a, 0x9e, 0x3f);
constexpr QRgb MissingColor = qRgb(0xd9, 0x23, 0x2e);

} // namespace

HVCoverageOverlay::HVCoverageOverlay(QWidget *window)
    : QWidget(window)
{
    // Named like Qt's own parts, which hosts skip when they search their children.
    setObjectName(QStringLiteral("qt_hovlets_coverage_overlay"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
    setFocusPolicy(Qt::NoFocus);
}

void HVCoverageOverlay::setOutlines(const QVector<HVOutline> &outlines)
{
    if (geometry() != parentWidget()->rect())
        setGeometry(parentWidget()->rect());
    // Panels that were added meanwhile are above it.
    if (parentWidget()->children().last() != this)
        raise();
    show();
    if (m_outlines == outlines)
        return;
    m_outlines = outlines;
    update();
}

void HVCoverageOverlay::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    for (const HVOutline &outline : std::as_const(m_outlines)) {
        QPen pen(QColor(outline.covered ? CoveredColor : MissingColor), Stroke);
        pen.setStyle(outline.covered ? Qt::SolidLine : Qt::DashLine);
        pen.setJoinStyle(Qt::MiterJoin);
        painter.setPen(pen);
        const int inset = Stroke / 2;
        painter.drawRect(outline.area.adjusted(inset, inset, -inset, -inset));
    }
}

bool isOverlay(const QObject *object)
{
    return qobject_cast<const HVCoverageOverlay *>(object) != nullptr;
}

bool takesOverlay(const QWidget *window)
{
    return !window->inherits("QSplitter"); // would turn each child into a pane
}

} // namespace Hovlets
