// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGui/QColor>
#include <QtWidgets/QWidget>

class QPushButton;

/// \brief Rows of coloured squares; a click selects one.
class Swatches : public QWidget
{
    Q_OBJECT

public:
    explicit Swatches(QWidget *parent = nullptr);

    QSize sizeHint() const override;
    void setCurrent(const QColor &color);

Q_SIGNALS:
    void chosen(const QColor &color);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;

private:
    QColor m_current;
};

/// \brief Selects the colour and the width of the next strokes.
class ColorPanel : public QWidget
{
    Q_OBJECT

public:
    explicit ColorPanel(QWidget *parent = nullptr);

    /// Emits the signals for the initial colour and width.
    void start();

Q_SIGNALS:
    void colorChanged(const QColor &color);
    void widthChanged(int width);

private:
    void setColor(const QColor &color);
    void mixColor();

    QColor m_color;
    Swatches *m_swatches;
    QPushButton *m_custom;
};
