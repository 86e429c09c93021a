// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVExport.h"
#include "HVIndex.h"
#include "HVInterface.h"

#include <QtCore/QLocale>
#include <QtCore/QMap>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariant>

#include <memory>

class QFileInfo;
class QMouseEvent;
class QPoint;
class QWidget;

namespace Hovlets {

class HVPopupServices;
class HVWidget;
class HVXmlElement;

/*!
 * \brief Ties the library together: content, hovering, the popup, and text services for content.
 *
 * Made and owned by an HVInterface; a host talks to that. Everything runs on the GUI thread,
 * synchronously: construction returns when all content is indexed. Nothing here throws; failures
 * are results, and messages where the host can do something about them.
 */
class HOVLETS_EXPORT HVManager : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVManager)

public:
    /*!
     * Indexes the packages and, with HVKeyTrackHover, starts to watch the mouse.
     * \param interface the host; not owned, and lives longer. With null nobody is asked and nothing
     * is told: no object has a key
     * \param context the settings; they are copied
     * \param dataPaths folders of packages; those that do not exist are skipped silently
     * \param index where content is looked up; not owned. Null makes one
     */
    HVManager(HVInterface *interface, HVContext &context, const QStringList &dataPaths,
              HVIndex *index);

    /*!
     * Stops watching the mouse and schedules the popup for deletion. Pinned popups stay.
     *
     * It also clears Qt::WA_AlwaysShowToolTips on all top-level widgets, whoever set it.
     */
    ~HVManager() override;

    /// \copydoc HVInterface::context()
    HVContext &context();

    /// \copydoc HVInterface::context() const
    const HVContext &context() const;

    /*!
     * Where content is looked up.
     * \return the host's index, or the manager's own
     */
    HVIndex *index();

    /*!
     * The host.
     * \return as given at construction
     */
    HVInterface *interface();

    /*!
     * The current popup.
     * \return the manager's; null before the first show
     */
    HVWidget *widget();

    /*!
     * The data paths.
     * \return as given at construction
     */
    QStringList searchPaths();

    /// \copydoc HVInterface::keys
    QStringList keys();

    /*!
     * Indexes the packages in folders; a host may add paths later.
     * \param paths folders of packages; those that do not exist are skipped silently
     */
    void loadDataPath(const QStringList &paths);

    /*!
     * Indexes the control files of one package; those in sub-folders are left out.
     * \param package the package folder
     */
    void loadPackage(const QFileInfo &package);

    /*!
     * Hands a control file to the index. (The name is spelled so on purpose: hosts call it.)
     * \param file canonical path of the control file
     * \param package canonical path of its package folder
     */
    void indexControFile(const QString &file, const QString &package);

    /*!
     * The locale of translation files.
     * \return HVKeyLocale, else HVKeyFallbackLocale, else the system's
     */
    QLocale currentLocale();

    /// \copydoc HVInterface::mouseMoveEventFilter
    bool mouseMoveEventFilter(QObject *object, QMouseEvent *event);

    /// \copydoc HVInterface::mouseButtonEventFilter
    bool mouseButtonEventFilter(QObject *object, QMouseEvent *event);

    /// \copydoc HVInterface::show
    bool show(const QString &key, const QPoint &position, QObject *object);

    /*!
     * The entry for a key in the preferred locale, else in the fallback locale.
     *
     * The caller owns and deletes both, the entry and its root.
     *
     * \param key the content key
     * \param[out] path the folder of the control file
     * \param[out] depth its number of folder levels below the package
     * \param[out] element the root of the returned tree, not to be used after a null answer
     * \return the entry, or null
     */
    HVXmlElement *retrieve(const QString &key, QString &path, int &depth, HVXmlElement *&element);

    /*!
     * Where the popup goes before it is moved into the screen: HVKeyCursorOffset from the cursor.
     * \param position where the cursor is: global, in pixels
     * \param widget not looked at
     * \return the popup's top-left corner: global, in pixels
     */
    QPoint tooltipPosition(const QPoint &position, QWidget *widget);

    /*!
     * Lets the current popup live on by itself, and makes a new one.
     *
     * \param widget the popup
     * \param[out] container the host's window for it, or null; written on success only
     * \return false when it is not the current popup
     */
    bool reserve(HVWidget *widget, QWidget *&container);

    /// Raises all pinned popups.
    void raise();

    /*!
     * Keeps all pinned popups above other windows, or no longer.
     * \param on whether to
     */
    void setStayOnTop(bool on);

    /*!
     * Passes a message to the host unless HVKeyMessageLevel is below its type.
     * \param type its severity
     * \param message the text
     */
    void handleMessage(HVMessageType type, const QString &message);

    /// \copydoc HVInterface::setGlobalProperty
    void setGlobalProperty(const QString &name, const QVariant &value);

    /*!
     * Fills the placeholders "%(name)s" of a text from the global properties.
     * \param text the text
     * \return the text; placeholders without a value stay in it
     */
    QString interpolate(const QString &text);

    /*!
     * Fills the placeholders "%(name)s" of a text.
     * \param text the text
     * \param values the values by their names; they may hold placeholders themselves
     * \return the text; placeholders without a value stay in it
     */
    QString interpolate(const QString &text, const QMap<QString, QVariant> &values);

    /// \copydoc HVInterface::hovletAttribute
    QString hovletAttribute(const QString &key, const QString &attribute,
                            const QString &defaultValue);

    /// \copydoc HVInterface::keyForObject
    QString keyForObject(QObject *object);

    /*!
     * The translation from the content package's file for the current locale.
     *
     * \param text the source text
     * \param context its context, by which equal texts are told apart
     * \return without such a file, or before the first show, \a text; with a file that lacks it, an
     * empty string. Content relies on the difference
     */
    QString translateString(const QString &text, const QString &context);

    /*!
     * Tells addresses, files and topics apart and has the host open what the settings allow.
     * \param resource an address, a path or the name of a topic
     * \return whether the host opened it
     */
    bool openExternalResource(const QString &resource);

protected:
    /*!
     * Watches the application with HVKeyTrackHover.
     * \param object whose event it is
     * \param event any event of the application
     * \return true for a tooltip event in whose place a popup shows
     */
    bool eventFilter(QObject *object, QEvent *event) override;

    /*!
     * Makes the popup on first use; later gives it the parent.
     * \param parent null makes it a window
     */
    void initializeTooltipWindow(QWidget *parent);

private:
    friend HVPopupServices *popupServicesOf(HVManager *manager);

    void inform(const QString &message);

    class Private;
    std::unique_ptr<Private> d;
};

} // namespace Hovlets
