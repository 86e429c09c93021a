// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QPoint>
#include <QtCore/QRect>
#include <QtCore/QString>
#include <QtWidgets/QWidget>

#include <memory>

namespace Hovlets {

class HVManager;
class HVView;
class HVXmlElement;

/*!
 * \brief The floating window in which a hovlet is shown.
 *
 * It takes the size of its view, keeps inside the available area of the screen, fades in and out
 * and hides some time after the mouse has left its safe region. The view may ask to be reserved
 * (pinned): the popup then becomes a titled tool window, or part of a window supplied by the host,
 * and lives on by itself, even without the manager.
 *
 * Settings are read at each use. Points are global, in pixels. GUI thread only.
 */
class HVWidget : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVWidget)

public:
    /// A hidden popup without a view. \a referenceWidget is the control it describes, or null.
    HVWidget(HVManager *manager, QWidget *parent, QWidget *referenceWidget);
    ~HVWidget() override;

    /// Owns \a view and deletes the previous one; null only deletes.
    void setView(HVView *view);
    HVView *view() const;

    /// Null once the manager is gone.
    HVManager *manager() const;

    /// The control that the current hovlet describes, or null.
    QWidget *referenceWidget() const;

    /// Starts the countdown to hiding when \a pos is not safe, and stops it when it is.
    void checkMousePosition(const QPoint &pos);

    /// Whether \a pos is over the reference widget, or over the popup grown by HVKeySafeMargin.
    bool isSafe(const QPoint &pos) const;

    /// Deletes the popup later, once its QML no longer runs. It does not show again.
    void retire();

public Q_SLOTS:
    /*!
     * Shows \a content with its top-left corner at \a pos, moved onto the screen where needed.
     *
     * The popup owns \a content from here on. \a rootPath is the package folder, \a reference the
     * control, which may be null. Null content does nothing.
     */
    void showWithContent(QObject *reference, const QPoint &pos, HVXmlElement *content,
                         const QString &rootPath);

    /// Moves the window back onto the screen.
    void reposition();

    /// Fades out, unless a fade runs already.
    void hideAnimated();
    void hideAnimationFinished();

    /// Fades in. A popup that is visible stays as it is; one that was fading out stays after all.
    void showAnimated();

    /// Restarts the countdown to hiding, unless the view must stay open or the popup is pinned.
    void setTimer();
    void contentReservedChanged();
    void contentResized();

    /*!
     * \a geometry, shifted into the available area of the reference widget's screen.
     *
     * One that is larger than the area ends with its bottom and right edges on the area's.
     * \a move receives whether it was shifted.
     */
    QRect findVisibleGeometry(QRect geometry, bool *move = nullptr) const;

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    void endFadeOut();
    QWidget *ownWindow();
    void placeAt(const QPoint &wanted, const QSize &size);

    class Private;
    std::unique_ptr<Private> d;
};

} // namespace Hovlets
