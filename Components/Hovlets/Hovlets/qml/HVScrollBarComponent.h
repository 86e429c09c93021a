// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtQuick/QQuickPaintedItem>

#include <memory>

class QScrollBar;

/*!
 * \brief The desktop's scroll bar as a QML item.
 *
 * A real QScrollBar without a parent, painted by the application's style; the item hands it mouse,
 * wheel and hover events. It is never a window on screen. Values are hundredths in the scroll bar's
 * integers: what is written is multiplied by 100 and truncated. GUI thread only.
 */
class HVScrollBarComponent : public QQuickPaintedItem
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVScrollBarComponent)
    Q_PROPERTY(float start READ start WRITE setStart NOTIFY startChanged)
    Q_PROPERTY(float end READ end WRITE setEnd NOTIFY endChanged)
    Q_PROPERTY(float position READ position WRITE setPosition NOTIFY positionChanged)
    Q_PROPERTY(bool orientHorizontal READ orientHorizontal WRITE setOrientHorizontal NOTIFY
                       orientHorizontalChanged)
    Q_PROPERTY(float scrollBarWidth READ scrollBarWidth NOTIFY scrollBarWidthChanged)
    Q_PROPERTY(float pageStep READ pageStep WRITE setPageStep NOTIFY pageStepChanged)
    Q_PROPERTY(float singleStep READ singleStep WRITE setSingleStep NOTIFY singleStepChanged)

public:
    explicit HVScrollBarComponent(QQuickItem *parent = nullptr);
    ~HVScrollBarComponent() override;

    float start() const;
    void setStart(float value);
    float end() const;
    void setEnd(float value);
    float position() const;

    /// Tells of every call, and once more when the value changes.
    void setPosition(float value);
    bool orientHorizontal() const;
    void setOrientHorizontal(bool horizontal);

    /// The bar's thickness, in pixels.
    float scrollBarWidth() const;

    /*!
     * How far a click beside the slider moves it: the part of the range that is in view. The
     * slider's length tells it. 0.1 unless set, which suits no range of pixels.
     */
    float pageStep() const;
    void setPageStep(float value);

    /// How far a click on an arrow moves the slider; the wheel moves it by several. 0.01 if not
    /// set.
    float singleStep() const;
    void setSingleStep(float value);

    /// Gives the bar the item's size. The bar keeps its size until this is called.
    Q_INVOKABLE void updateDimensions();

    /// Sets the value and tells only when it changes.
    Q_INVOKABLE void setPositionExternal(float value);

    void paint(QPainter *painter) override;

public Q_SLOTS:
    void scrollBarPositionChanged(int value);

Q_SIGNALS:
    void startChanged();
    void endChanged();
    void positionChanged();
    void orientHorizontalChanged();
    void scrollBarWidthChanged();
    void pageStepChanged();
    void singleStepChanged();

protected:
    void itemChange(ItemChange change, const ItemChangeData &value) override;
    bool eventFilter(QObject *object, QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseUngrabEvent() override;
    void wheelEvent(QWheelEvent *event) override;
    void hoverEnterEvent(QHoverEvent *event) override;
    void hoverMoveEvent(QHoverEvent *event) override;
    void hoverLeaveEvent(QHoverEvent *event) override;

private:
    void hand(QEvent &event);
    void handMouse(const QMouseEvent &event);

    std::unique_ptr<QScrollBar> m_scrollBar;
};
