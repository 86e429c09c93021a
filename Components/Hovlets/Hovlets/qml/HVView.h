// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVContext.h"
#include "HVXmlElement.h"

#include <QtCore/QDir>
#include <QtQml/QQmlError>
#include <QtQuickWidgets/QQuickWidget>

#include <functional>
#include <memory>

class QQuickItem;
class QQuickWindow;

namespace Hovlets {

class HVContentTree;
class HVManager;

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
class HVView : public QQuickWidget
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

    HVXmlElement *content();
    const HVXmlElement *content() const;

    /// Only stores the pointer: the caller that replaces content deletes the old one.
    void setContent(HVXmlElement *element);

    /// Owns the content that a look-up returned, entry and root, in place of the content before.
    void setContentTree(HVContentTree tree);

    /*!
     * Owns \a content, in place of the content before, and runs its user interface.
     *
     * When it returns, the view has the size of the new content and, if it is visible, has rendered
     * it: repaint() brings it to the screen. \a rootPath is the package folder.
     * QML and code of the host run meanwhile; they may show other content, which then stays.
     */
    void showContent(HVXmlElement *content, const QString &rootPath);

    QDir packageRoot() const;
    void setPackageRoot(const QDir &dir);

    /// Whether QML asks the popup not to hide by itself.
    bool stayOpen() const;

    /// Emits stayOpenChanged() on every call, even if nothing changes: content relies on it.
    void setStayOpen(bool value);

    /// Whether QML asks the popup to be kept as a window.
    bool reserved() const;
    void setReserved(bool value);

    /// Whether QML is setting the flag: its items must outlive the handler that sets it.
    bool isReservedByQml() const;

    bool documentationAvailable() const;

    /// Path of the QML file to run for the content; the category path when no file is there.
    QString uiRootFilePath() const;

    /*!
     * The folder or file for components of a kind: the attribute of the content, else of its parent
     * element, else the setting \a key with its default \a fallback.
     */
    QString categoryPath(const QString &attribute, const QString &fallback, contextKey key) const;

    /*!
     * The first existing file \a relativePath (or category path, when that is empty) in the
     * content's search folders; the category path when there is none.
     */
    QString findComponent(const QString &attribute, contextKey key, const QString &fallback,
                          const QString &relativePath) const;

    /// The category path of the resources. It uses the attribute "resource", and findResource() the
    /// attribute "resources"; content relies on the difference.
    QString resourceDirectoryPath() const;

    /// Sets the cursor that \a object shows; an empty \a shape removes it. \a tag is not used.
    Q_INVOKABLE void setItemCursor(QQuickItem *object, const QString &shape, const QString &tag);
    Q_INVOKABLE void debugLog(const QString &msg);
    Q_INVOKABLE bool openExternalResource(const QString &resourceLocator);

    /// The text with its placeholders "%(name)s" filled.
    Q_INVOKABLE QString interpolate(const QString &string);

    /// Pushes a cursor for the whole application; QML pairs it with restoreOverrideCursor().
    Q_INVOKABLE void setOverrideCursor(const QString &shape);
    Q_INVOKABLE void restoreOverrideCursor();
    Q_INVOKABLE QString translate(const QString &string, const QString &context);

    /*!
     * The translation by the file of the content's package for the current locale.
     *
     * \a text itself without such a file; an empty string when the file lacks the text. Content
     * relies on the difference.
     */
    QString translatedByPackage(const QString &text, const QString &context);

    /// Path of a file in the package's resources, as written; the category path if not found.
    Q_INVOKABLE QString findResource(const QString &relativePath);

    /// The views that show \a window: one, or none.
    static QList<HVView *> viewsOf(const QQuickWindow *window);

    /// Whether QML of the view is running, or waiting for an answer of the host.
    [[nodiscard]] bool isBusy() const;

    /// Calls \a action when the view is no longer busy, at once if it is not. It does not outlive
    /// the view.
    void whenIdle(const std::function<void()> &action);

    /// Re-reads the desktop's tooltip colours and the application's font.
    void refreshTheme();

public Q_SLOTS:
    /// Sends the view's errors as messages. The library does not connect it.
    void statusHasChanged(DECLARATIVEVIEW_STATUS s);

    /// Runs the QML file, unless it is running already. If the file is missing, nothing changes.
    void loadQML(const QString &path);
    void handleWarnings(const QList<QQmlError> &warnings);

    /// Returns the QML's root item to its default state.
    void resetState();

    /// Notifies QML of a change to HVKeyDocumentationEnabled. The library does not connect it.
    void managerContextSettingDidChange(HVContextKey key);

Q_SIGNALS:
    void stayOpenChanged();
    void reservedChanged();
    void contentChanged();
    void contentSizeChanged();
    void documentationAvailableChanged();
    void resourceDirectoryChanged();

protected:
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void writeReserved(bool value);
    void exposeContent(const QString &rootPath);
    void renderScene();

    class Activity;
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace Hovlets
