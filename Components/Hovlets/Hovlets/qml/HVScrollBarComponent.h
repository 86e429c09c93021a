// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtQuick/QQuickPaintedItem>

#include <memory>

class QScrollBar;

/*!
 * \brief The desktop's scroll bar as a QML item.
 *
 * Wraps a real QScrollBar without a parent, painted in the application's style, and passes mouse,
 * wheel and hover events to it. The scroll bar is never a window on screen. It counts in
 * hundredths: a value is multiplied by 100 and truncated. Do not use it outside a popup's QML: Qt
 * Quick Controls has a scroll bar for that. GUI thread only.
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

    /// Emits positionChanged() on every call, and once more if the value changes.
    void setPosition(float value);
    bool orientHorizontal() const;
    void setOrientHorizontal(bool horizontal);

    /// Thickness of the bar in pixels.
    float scrollBarWidth() const;

    /*!
     * The distance by which a click beside the slider moves it: the visible part of the range,
     * which also determines the slider's length. Default 0.1, which is too small for a range in
     * pixels.
     */
    float pageStep() const;
    void setPageStep(float value);

    /// The distance by which a click on an arrow moves the slider; the wheel moves it by several of
    /// them. Default 0.01.
    float singleStep() const;
    void setSingleStep(float value);

    /// Resizes the bar to the item. Until this is called, the bar keeps its size.
    Q_INVOKABLE void updateDimensions();

    /// Sets the value, and emits positionChanged() only if it changes.
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
