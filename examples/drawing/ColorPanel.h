// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGui/QColor>
#include <QtWidgets/QWidget>

class QPushButton;

/// \brief Rows of coloured squares to choose from with a click.
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

/// \brief Colour and width of the strokes to come.
class ColorPanel : public QWidget
{
    Q_OBJECT

public:
    explicit ColorPanel(QWidget *parent = nullptr);

    /// Announces the colour and the width to begin with.
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
