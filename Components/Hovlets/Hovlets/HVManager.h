// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVExport.h"
#include "HVInterface.h"

#include <QtCore/QLocale>
#include <QtCore/QMap>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariant>

#include <memory>

class HVContext;
class QFileInfo;
class QMouseEvent;
class QPoint;
class QWidget;

namespace Hovlets {

class HVIndex;
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
    /// See HVInterface. \a context is copied; \a index is not owned, null makes one.
    HVManager(HVInterface *interface, HVContext &context, const QStringList &dataPaths,
              HVIndex *index);

    /*!
     * Stops watching the mouse and schedules the popup for deletion. Pinned popups stay.
     *
     * It also clears Qt::WA_AlwaysShowToolTips on all top-level widgets, whoever set it.
     */
    ~HVManager() override;

    HVContext &context();
    const HVContext &context() const;
    HVIndex *index();
    HVInterface *interface();

    /// The current popup, null before the first show.
    HVWidget *widget();

    /// The data paths as given at construction.
    QStringList searchPaths();

    QStringList keys();

    /// Indexes the packages in each of \a paths; a host may add paths later.
    void loadDataPath(const QStringList &paths);

    /// Indexes the control files of one package folder; those in sub-folders are left out.
    void loadPackage(const QFileInfo &package);

    void indexControFile(const QString &file, const QString &package);

    /// HVKeyLocale, else HVKeyFallbackLocale, else the system's.
    QLocale currentLocale();

    /// Tell the popup where the mouse is. Always false, so that the event goes on.
    bool mouseMoveEventFilter(QObject *object, QMouseEvent *event);

    /// A click outside hides the popup, or activates one that must stay open. Always false.
    bool mouseButtonEventFilter(QObject *object, QMouseEvent *event);

    /// See HVInterface::show().
    bool show(const QString &key, const QPoint &position, QObject *object);

    /*!
     * The entry for \a key in the preferred locale, else in the fallback locale, else null.
     *
     * The caller owns and deletes both, the entry and \a element, its root. \a path and \a depth
     * are those of its control file, see HVIndex::retrieve().
     */
    HVXmlElement *retrieve(const QString &key, QString &path, int &depth, HVXmlElement *&element);

    /// Top-left corner of the popup for a cursor at \a position; \a widget is not looked at.
    QPoint tooltipPosition(const QPoint &position, QWidget *widget);

    /*!
     * Lets \a widget, the current popup, live on by itself; false for any other.
     *
     * \a container is the host's window for it, or null.
     */
    bool reserve(HVWidget *widget, QWidget *&container);

    /// Raises all pinned popups.
    void raise();

    /// Keeps all pinned popups above other windows, or no longer.
    void setStayOnTop(bool on);

    /// Passes the message to the host unless HVKeyMessageLevel is below its type.
    void handleMessage(HVMessageType type, const QString &message);

    void setGlobalProperty(const QString &name, const QVariant &value);

    /// \a text with its placeholders "%(name)s" filled from the global properties.
    QString interpolate(const QString &text);
    QString interpolate(const QString &text, const QMap<QString, QVariant> &values);

    /// See HVInterface::hovletAttribute(); content on screen answers without a look-up.
    QString hovletAttribute(const QString &key, const QString &attribute,
                            const QString &defaultValue);

    QString keyForObject(QObject *object);

    /*!
     * The translation from the content package's file for the current locale.
     *
     * Without such a file it is \a text; with a file that lacks the text it is empty. Content
     * relies on the difference.
     */
    QString translateString(const QString &text, const QString &context);

    /// Tells addresses, files and topics apart and has the host open what the settings allow.
    bool openExternalResource(const QString &resource);

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

    /// Makes the popup on first use; later gives it the parent.
    void initializeTooltipWindow(QWidget *parent);

private:
    void inform(const QString &message);
    bool mayShow() const;

    class Private;
    std::unique_ptr<Private> d;
};

} // namespace Hovlets
