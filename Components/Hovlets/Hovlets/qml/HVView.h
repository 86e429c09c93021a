// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVContext.h"
#include "HVSceneWidget.h"
#include "HVXmlElement.h"

#include <QtCore/QDir>
#include <QtQml/QQmlError>
#include <QtGui/QColor>

#include <functional>
#include <memory>

class QQuickItem;
class QQuickWindow;

namespace Hovlets {

class HVContentTree;
class HVLookUpMemory;
class HVManager;
class HVViewWindow;

/// The type in which the slot statusHasChanged() has always been declared.
typedef QQuickWidget::Status DECLARATIVEVIEW_STATUS;

/*!
 * \brief Runs the QML user interface of the current content and is what that QML sees of the
 * library, as "hovletView".
 *
 * The view takes the size of the QML's root item. Failures become messages of type HVMessageDebug.
 * The manager creates it and its popup owns it; a view that outlives the manager sends no messages
 * and finds no files. GUI thread only.
 */
class HVView : public HVSceneWidget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVView)
    Q_PROPERTY(bool stayOpen READ stayOpen WRITE setStayOpen NOTIFY stayOpenChanged)
    Q_PROPERTY(bool reserved READ reserved WRITE writeReserved NOTIFY reservedChanged)
    Q_PROPERTY(Hovlets::HVXmlElement *content READ content WRITE setContent NOTIFY contentChanged)
    Q_PROPERTY(bool documentationAvailable READ documentationAvailable NOTIFY
                       documentationAvailableChanged)
    Q_PROPERTY(QString resourceDirectory READ resourceDirectoryPath)

public:
    HVView(HVManager *manager, QWidget *parent);

    /// Deletes the content that is still set.
    ~HVView() override;

    /// The colour of the popup's pixels to the right of and below the view: the property "rimColor"
    /// of the root item. Invalid if there is none.
    QColor rimColor() const;

    /// The background of the popup: the property "fillColor" of the root item. Invalid if there is
    /// none.
    QColor fillColor() const;

    /// The radius of the corners that the user interface leaves transparent: the property
    /// "cornerRadius" of the root item, or 0.
    qreal cornerRadius() const;

    /// Whether the user interface can draw the title bar of a pinned popup: the property
    /// "drawsTitleBar" of the root item.
    bool drawsTitleBar() const;

    /// The popup's window as QML sees it.
    HVViewWindow &viewWindow() const;

    /// What the popup's window permits: see HVToolTipTheme::isRounded() and isFramed().
    void setSurface(bool isRounded, bool isFramed);

    /// The entry; null before the first show, or if it was deleted.
    HVXmlElement *content();
    const HVXmlElement *content() const;

    /// Takes ownership of \a element, but does not delete the previous content: the caller does.
    void setContent(HVXmlElement *element);

    /// Takes ownership of the result of a look-up, entry and root, and deletes the previous content
    /// once no show is running.
    void setContentTree(HVContentTree tree);

    /*!
     * Takes ownership of \a content, unless it is the current one, and runs its user interface.
     *
     * When it returns, the view has the size of the new content and, if it is visible, has rendered
     * it: painting the window brings it to the screen. \a rootPath is the package folder.
     * QML and the host's code run meanwhile; they may show other content, which then stays.
     */
    void showContent(HVXmlElement *content, const QString &rootPath);

    /// Whether the simple user interface is running because of HVKeySimpleMode.
    bool isSimple() const;

    /// Whether the full popup would show more than the simple one: the property "hasMore" of the
    /// root item. True if there is none.
    bool hasMore() const;

    /// Whether the user may pin the popup: the property "pinnable" of the root item. True if there
    /// is none.
    bool isPinnable() const;

    /// Runs the full user interface for the content of a simple one until other content is shown.
    /// Waits for QML that is running.
    void expand();

    /// The package folder of the content.
    QDir packageRoot() const;
    void setPackageRoot(const QDir &dir);

    /// Whether QML requests that the popup not hide by itself.
    bool stayOpen() const;

    /// Emits stayOpenChanged() on every call, even if nothing changes: content relies on it.
    void setStayOpen(bool value);

    /// Whether QML requests that the popup be pinned.
    bool reserved() const;

    /// Emits reservedChanged() if the value changes; the popup then pins itself.
    void setReserved(bool value);

    /// Whether QML is setting the flag: its items must outlive the handler that sets it.
    bool isReservedByQml() const;

    /// See HVEntryReader::disabledReason().
    void setDisabledReason(const QString &reason);

    /// The setting HVKeyClipReleaseDelay, in ms.
    int clipReleaseDelay() const;

    /// The setting HVKeyDocumentationEnabled; false if it is not set.
    bool documentationAvailable() const;

    /// Path of the QML file to run for the content; the category path if the file is missing.
    QString uiRootFilePath() const;

    /*!
     * The folder or file for components of a kind: the attribute of the content, else that of its
     * parent element, else the setting \a key with its default \a fallback.
     */
    QString categoryPath(const QString &attribute, const QString &fallback, contextKey key) const;

    /*!
     * The first existing file \a relativePath (or category path, if it is empty) in the content's
     * search folders; the category path if there is none.
     *
     * Under HVKeyConfineContent, a file outside of these folders counts as missing and causes one
     * warning. A category path that leads out of them becomes an empty string.
     */
    QString findComponent(const QString &attribute, contextKey key, const QString &fallback,
                          const QString &relativePath) const;

    /// The category path of the resources. It uses the attribute "resource", and findResource() the
    /// attribute "resources"; content relies on the difference. Under HVKeyConfineContent, an
    /// attribute that leads out of the package is unused.
    QString resourceDirectoryPath() const;

    /// Sets the cursor over \a object; an empty \a shape removes it. \a tag is unused.
    Q_INVOKABLE void setItemCursor(QQuickItem *object, const QString &shape, const QString &tag);

    /// Sends a debug message to the host.
    Q_INVOKABLE void debugLog(const QString &msg);

    /// Asks the host to open an address, a file or a topic; false if nothing was opened.
    Q_INVOKABLE bool openExternalResource(const QString &resourceLocator);

    /// The text with its placeholders "%(name)s" filled.
    Q_INVOKABLE QString interpolate(const QString &string);

    /// Sets a cursor for the whole application until QML calls restoreOverrideCursor().
    Q_INVOKABLE void setOverrideCursor(const QString &shape);
    Q_INVOKABLE void restoreOverrideCursor();

    /// The host's translation, by default that of translatedByPackage().
    Q_INVOKABLE QString translate(const QString &string, const QString &context);

    /*!
     * The translation from the file of the content's package for the current locale. With
     * HVKeyLanguageFallback, other locales may follow.
     *
     * Without such a file, \a text itself; an empty string if the file lacks the text. Content
     * relies on the difference.
     */
    QString translatedByPackage(const QString &text, const QString &context);

    /// Path of a file in the package's resources; the category path if there is none.
    Q_INVOKABLE QString findResource(const QString &relativePath);

    /// What the view has found; open a scope on it before you read an entry.
    [[nodiscard]] const HVLookUpMemory &lookUps() const;

    /// The views that render \a window: at most one.
    static QList<HVView *> viewsOf(const QQuickWindow *window);

    /// Whether the view's QML is running or waiting for the host. Then it must not be deleted.
    [[nodiscard]] bool isBusy() const;

    /// Calls \a action when the view is no longer busy, which may be immediately. Does not call it
    /// if the view is deleted before.
    void whenIdle(const std::function<void()> &action);

    /// Deletes the view once it is idle. Until then, it outlives its parent.
    void deleteWhenIdle();

    /// Re-reads the desktop's tooltip colours and the application's font.
    void refreshTheme();

public Q_SLOTS:
    /// Sends the view's errors as messages. The library does not connect it.
    void statusHasChanged(DECLARATIVEVIEW_STATUS s);

    /// Runs the QML file unless it is already running. If the file is missing, nothing changes.
    void loadQML(const QString &path);

    /// Sends the QML engine's warnings as debug messages.
    void handleWarnings(const QList<QQmlError> &warnings);

    /// Returns the QML's root item to its default state.
    void resetState();

    /// Notifies QML of a change to HVKeyDocumentationEnabled. The library does not connect it.
    void managerContextSettingDidChange(HVContextKey key);

Q_SIGNALS:
    void stayOpenChanged();
    void reservedChanged();

    /// Never emitted: user interfaces bind to the context property "hovlet".
    void contentChanged();

    /// Emitted when the view has a new size.
    void contentSizeChanged();

    /// Emitted only by managerContextSettingDidChange().
    void documentationAvailableChanged();

    /// Never emitted.
    void resourceDirectoryChanged();

protected:
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    bool isNotDenied(const char *property) const;
    void writeReserved(bool value);
    void clearBehindCorners();

    class Private;
    std::unique_ptr<Private> d;
};

} // namespace Hovlets
