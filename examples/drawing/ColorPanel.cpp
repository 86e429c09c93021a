// SPDX-License-Identifier: Apache-2.0
#include "ColorPanel.h"

#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QColorDialog>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSpinBox>

namespace {

constexpr int Columns = 8;
constexpr int Cell = 24;
constexpr int FirstWidth = 4;
constexpr int LargestWidth = 60;

const QVector<QColor> &colors()
{
    static const QVector<QColor> colors {
        0x1b1e20, 0x7f8c8d, 0xbdc3c7, 0xffffff, 0x7a4a2b, 0xb8763e, 0xe8c9a0, 0xfdf6e3,
        0xc0392b, 0xe67e22, 0xf1c40f, 0x27ae60, 0x16a085, 0x2980b9, 0x8e44ad, 0xd6589f,
    };
    return colors;
}

QRect cellOf(int index)
{
    return { index % Columns * Cell + 2, index / Columns * Cell + 2, Cell - 4, Cell - 4 };
}

} // namespace

Swatches::Swatches(QWidget *parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("swatches"));
    setFixedSize(sizeHint());
}

QSize Swatches::sizeHint() const
{
    return { Columns * Cell, int(colors().size()) / Columns * Cell };
}

void Swatches::setCurrent(const QColor &color)
{
    m_current = color;
    update();
}

void Swatches::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    for (int i = 0; i < colors().size(); ++i) {
        const QColor color = colors().at(i);
        const bool current = color == m_current;
        painter.setPen(current ? QPen(palette().color(QPalette::Highlight), 2.5)
                               : QPen(palette().color(QPalette::Mid), 1));
        painter.setBrush(color);
        painter.drawRoundedRect(QRectF(cellOf(i)).adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);
    }
}

void Swatches::mousePressEvent(QMouseEvent *event)
{
    for (int i = 0; i < colors().size(); ++i) {
        if (cellOf(i).contains(event->pos()))
            Q_EMIT chosen(colors().at(i));
    }
}

ColorPanel::ColorPanel(QWidget *parent)
    : QWidget(parent)
    , m_swatches(new Swatches)
    , m_custom(new QPushButton(tr("Mix a colour…")))
{
    m_custom->setObjectName(QStringLiteral("customColor"));
    connect(m_swatches, &Swatches::chosen, this, &ColorPanel::setColor);
    connect(m_custom, &QPushButton::clicked, this, &ColorPanel::mixColor);

    auto *width = new QSpinBox;
    width->setObjectName(QStringLiteral("penWidth"));
    width->setRange(1, LargestWidth);
    width->setValue(FirstWidth);
    width->setSuffix(tr(" px"));
    connect(width, QOverload<int>::of(&QSpinBox::valueChanged), this, &ColorPanel::widthChanged);

    auto *layout = new QFormLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addRow(m_swatches);
    layout->addRow(m_custom);
    layout->addRow(tr("Width"), width);
}

void ColorPanel::start()
{
    setColor(colors().at(13));
    Q_EMIT widthChanged(FirstWidth);
}

void ColorPanel::setColor(const QColor &color)
{
    m_color = color;
    m_swatches->setCurrent(color);
    QPixmap sample(16, 16);
    sample.fill(color);
    m_custom->setIcon(sample);
    Q_EMIT colorChanged(color);
}

void ColorPanel::mixColor()
{
    const QColor color = QColorDialog::getColor(m_color, this);
    if (color.isValid())
        setColor(color);
}
