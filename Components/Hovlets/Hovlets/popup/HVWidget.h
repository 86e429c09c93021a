// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QPoint>
#include <QtCore/QRect>
#include <QtCore/QString>
#include <QtWidgets/QWidget>

#include <memory>
#include <optional>

namespace Hovlets {

class HVLevelKey;
class HVManager;
class HVView;
class HVXmlElement;

/*!
 * \brief The floating window that shows a hovlet.
 *
 * It takes the size of its view, stays inside the available area of the screen, fades in and out,
 * and hides some time after the mouse has left its safe region. The view may request to be reserved
 * (pinned). The popup then becomes a titled tool window, or part of a window supplied by the host,
 * and continues to exist independently, even without the manager.
 *
 * Settings are read whenever they are used. Points are global, in pixels. GUI thread only.
 */
class HVWidget : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVWidget)

public:
    /// A hidden popup without a view. \a referenceWidget is the control it describes, or null.
    HVWidget(HVManager *manager, QWidget *parent, QWidget *referenceWidget);
    ~HVWidget() override;

    /// Takes ownership of \a view and deletes the previous one. Null only deletes.
    void setView(HVView *view);
    HVView *view() const;

    /// Null after the manager is destroyed.
    HVManager *manager() const;

    /// The control that the current hovlet describes, or null.
    QWidget *referenceWidget() const;

    /// Sets the mouse position for the next showWithContent(), which otherwise uses the cursor's.
    void setHoverPosition(const QPoint &position);

    /// Starts the countdown to hiding if \a pos is not safe, and stops it if it is.
    void checkMousePosition(const QPoint &pos);

    /*!
     * Whether \a pos is over the reference widget, over the popup grown by HVKeySafeMargin, or with
     * HVKeySafePath between the two.
     *
     * A tab, section, item or entry for which the host returns another key is not part of the
     * reference widget here. Asking the host runs its code, which may delete the popup.
     */
    bool isSafe(const QPoint &pos) const;

    /// Remembers that the content on screen is that for \a key, which the host returned for the
    /// reference widget with the pointer at \a position. Forgotten with the next content.
    void setHover(const QString &key, const QPoint &position);

    /// Loads \a content, which the view has already, into a hidden popup.
    void prepare(HVXmlElement *content, const QString &rootPath);

    /// Creates the native window of a hidden popup, and what its view needs to render.
    void createWindow();

    /// Whether the popup is where it would be shown for \a control, which may be null.
    bool isPlacedFor(const QWidget *control) const;

    /// Moves the popup and its content to \a control, as showWithContent() would.
    void placeFor(QWidget *control, const QPoint &pos);

    /*!
     * Shows \a content as a pinned popup that belongs to \a window, which may be null.
     *
     * Its frame is at \a position, or as near to it as the screen allows. The popup owns
     * \a content, and must be the current one.
     */
    void showPinned(const QPoint &position, QWidget *window, HVXmlElement *content,
                    const QString &rootPath);

    /// The top-left corner of the window's frame, or of the popup if it is docked in one.
    QPoint placeOfWindow() const;

    /// Deletes the popup later, when its QML is no longer running. It does not show again.
    void retire();

    void setVisible(bool visible) override;

public Q_SLOTS:
    /*!
     * Shows \a content with the popup's top-left corner at \a pos, shifted onto the screen if
     * necessary.
     *
     * The popup takes ownership of \a content. \a rootPath is the package folder. \a reference is
     * the control, and may be null. If \a content is null, nothing happens.
     */
    void showWithContent(QObject *reference, const QPoint &pos, HVXmlElement *content,
                         const QString &rootPath);

    /// Moves the window back onto the screen.
    void reposition();

    /// Fades out, unless a fade is already running.
    void hideAnimated();

    /// Hides immediately, and returns the QML to its default state.
    void hideAnimationFinished();

    /// Fades in. A visible popup does not change, and one that was fading out stays.
    void showAnimated();

    /// Restarts the countdown to hiding, unless the view must stay open or the popup is pinned.
    void setTimer();

    /// Pins the popup if the view requests it and the manager permits it.
    void contentReservedChanged();

    /// Takes the size of the view.
    void contentResized();

    /*!
     * \a geometry, shifted into the available area of the reference widget's screen.
     *
     * A geometry larger than the area ends at the area's bottom and right edges. \a move, unless
     * null, is set to whether it was shifted.
     */
    QRect findVisibleGeometry(QRect geometry, bool *move = nullptr) const;

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    bool load(HVXmlElement *content, const QString &rootPath);
    [[nodiscard]] bool turnTo(QWidget *control);
    [[nodiscard]] bool useScreenAt(const std::optional<QPoint> &position);
    [[nodiscard]] bool place(const QPoint &pos);
    void startWatching();
    void endShow();
    [[nodiscard]] bool paintInterior(const QRect &area);
    void takeLook();
    [[nodiscard]] HVLevelKey readLevelKey() const;
    [[nodiscard]] bool hasNextLevel() const;
    void showNextLevel();
    void expand();
    void expandNow();
    void paintRoundedRim();
    bool decideOnTitleBar(const QWidget *container);
    [[nodiscard]] bool isResizable() const;
    void endFadeOut();

    class Private;
    std::unique_ptr<Private> d;
};

} // namespace Hovlets
