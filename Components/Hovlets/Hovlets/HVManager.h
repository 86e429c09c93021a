// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVExport.h"
#include "HVIndex.h"
#include "HVInterface.h"

#include <QtCore/QByteArray>
#include <QtCore/QLocale>
#include <QtCore/QMap>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariant>

#include <memory>

// Windows headers define it for COM.
#pragma push_macro("interface")
#undef interface

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
 * HVInterface creates and owns the manager, and forwards to it. Hosts call HVInterface. Do not
 * create a manager in an application, except to test without a host.
 *
 * GUI thread only, and synchronous: the constructor returns when all content is indexed. Nothing
 * throws. A failure is a result, and a message where the host can act on it.
 */
class HOVLETS_EXPORT HVManager : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVManager)

public:
    /*!
     * Indexes the packages and, with HVKeyTrackHover, starts to watch the mouse.
     * \param interface the host; not owned, must outlive the manager. Null means that no host
     * answers: no control has a key, and messages are dropped
     * \param context the settings; they are copied
     * \param dataPaths folders of packages; those that do not exist are skipped silently
     * \param index where content is looked up; not owned, and must outlive the manager. Null
     * creates the default index
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
    [[nodiscard]] const HVContext &context() const;

    /*!
     * Where content is looked up: the index supplied by the host, or the default one. Never null.
     */
    HVIndex *index();

    /*!
     * The host that was given at construction, which may be null.
     *
     * A call does not compile where Windows headers define "interface" as a macro; undefine it
     * first, as this header does for itself.
     */
    HVInterface *interface();

    /// The current popup, which the manager owns; null before the first show. The header of its
    /// class is not installed: hosts use HVPopup instead.
    HVWidget *widget();

    /// The data paths that were given at construction.
    QStringList searchPaths();

    /// \copydoc HVInterface::keys
    QStringList keys();

    /*!
     * Indexes the packages in folders, at any time. Their entries take precedence over those that
     * were indexed before.
     * \param paths folders of packages; those that do not exist are skipped silently
     */
    void loadDataPath(const QStringList &paths);

    /*!
     * Indexes the control files of one package, but not those in subfolders.
     * \param package the package folder
     */
    void loadPackage(const QFileInfo &package);

    /*!
     * Passes a control file to the index. Hosts call it by this misspelt name, which therefore
     * stays.
     * \param file canonical path of the control file
     * \param package canonical path of its package folder
     */
    void indexControFile(const QString &file, const QString &package);

    /// The locale of translation files: HVKeyLocale, else HVKeyFallbackLocale, else the system's.
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
     * \param[out] element the root of the returned tree; unused after a null result
     * \return the entry, or null
     */
    HVXmlElement *retrieve(const QString &key, QString &path, int &depth, HVXmlElement *&element);

    /*!
     * The popup's top-left corner before it is shifted onto the screen: \a position of the cursor
     * plus HVKeyCursorOffset. Both are global, in pixels. The widget is unused.
     */
    QPoint tooltipPosition(const QPoint &position, QWidget *widget);

    /*!
     * Makes the current popup independent, because the user has pinned it, and creates another one
     * for the next hover. Asks the host for a container.
     *
     * \param widget the popup that the user has pinned
     * \param[out] container the window that the host supplies for it, or null; only set on success
     * \return false if \a widget is not the current popup, or is deleted while the host answers
     */
    bool reserve(HVWidget *widget, QWidget *&container);

    /// Raises all pinned popups.
    void raise();

    /// Sets or clears the hint that keeps pinned popups above other windows.
    void setStayOnTop(bool on);

    /*!
     * Passes a message to the host unless \a type is above HVKeyMessageLevel.
     */
    void handleMessage(HVMessageType type, const QString &message);

    /// \copydoc HVInterface::setGlobalProperty
    void setGlobalProperty(const QString &name, const QVariant &value);

    /*!
     * The text with its placeholders "%(name)s" replaced by global properties. Placeholders without
     * a value stay visible.
     */
    QString interpolate(const QString &text);

    /*!
     * The text with its placeholders "%(name)s" replaced by \a values, which may contain
     * placeholders themselves. Placeholders without a value stay visible.
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
     * \param context distinguishes equal texts
     * \return the translation. Without such a file, or before the first show, \a text; if the file
     * lacks the text, an empty string. Content relies on the difference
     */
    QString translateString(const QString &text, const QString &context);

    /*!
     * Classifies an address, a path or a topic, and asks the host to open it if the settings allow
     * that.
     * \return whether the host opened it
     */
    bool openExternalResource(const QString &resource);

    /// \copydoc HVInterface::saveState
    [[nodiscard]] QByteArray saveState() const;

    /// \copydoc HVInterface::restoreState
    bool restoreState(const QByteArray &state);

protected:
    /*!
     * Receives the events of the whole application if HVKeyTrackHover was true at construction.
     * \return true for a tooltip event that a popup replaces, at once or after HVKeyShowDelay
     */
    bool eventFilter(QObject *object, QEvent *event) override;

    /// Creates the popup on first use; later changes its parent to \a parent. Without a parent, the
    /// popup is a window.
    void initializeTooltipWindow(QWidget *parent);

private:
    friend HVPopupServices *popupServicesOf(HVManager *manager);

    void inform(const QString &message);

    class Private;
    std::unique_ptr<Private> d;
};

} // namespace Hovlets

#pragma pop_macro("interface")
