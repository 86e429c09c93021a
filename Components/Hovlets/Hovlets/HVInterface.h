// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVContext.h"
#include "HVExport.h"
#include "HVHostTypes.h"

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariant>

#include <memory>

class QMouseEvent;
class QPoint;
class QWidget;

namespace Hovlets {

class HVIndex;

/*!
 * \brief The one class that a host derives from; creating it starts the library.
 *
 * The virtual operations are the library's questions to the host. Each has a default, so a host
 * overrides only what it needs. All of them are called on the GUI thread, synchronously.
 *
 * Create one object after the QApplication and delete it before the QApplication ends. Deleting it
 * ends everything that the library runs; popups that the user has pinned stay.
 *
 * While the constructor runs, the content is indexed and messages go to this class's
 * handleMessage(): an override is reached only once the derived object exists.
 */
class HOVLETS_EXPORT HVInterface : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVInterface)

public:
    /*!
     * Indexes the packages in \a dataPaths and, with HVKeyTrackHover, starts to watch the mouse.
     *
     * \param context the settings; they are copied
     * \param dataPaths folders of packages; those that do not exist are skipped silently
     * \param index where content is looked up; it stays the host's and must live as long as this
     * object. Null makes one of the library's own
     */
    HVInterface(HVContext &context, const QStringList &dataPaths, HVIndex *index = nullptr);

    /// Ends everything that the library runs; pinned popups stay.
    ~HVInterface() override;

    /*!
     * A window for a popup that the user has pinned, or null (the default) to let it become a tool
     * window of its own.
     *
     * The window stays the host's; the popup becomes its child, in its layout if it has one.
     *
     * \param type what the window is for; HVReservedWindow is the only one
     * \return the window, or null
     */
    virtual QWidget *createWindow(HVWindowType type);

    /*!
     * The content key of a control, by default its object name.
     * \param object what the mouse rests on, a widget or a window; never null
     * \return the key; an empty one has no content
     */
    virtual QString keyForObject(QObject *object);

    /*!
     * Opens what a link of the content names. Asked only if the settings allow it.
     *
     * By default addresses open in the desktop's browser; topics and files are not opened.
     *
     * \param type what kind of thing it is
     * \param resource as the content has it
     * \return whether that worked
     */
    virtual bool openExternalResource(HVExternalResourceType type, const QString &resource);

    /*!
     * Takes a message; by default it becomes a line "level:message" of Qt's debug output.
     * \param type its severity; HVKeyMessageLevel says up to which they come
     * \param message the text
     */
    virtual void handleMessage(HVMessageType type, const QString &message);

    /*!
     * A translation for the user interface of the content, by default from the translation files of
     * the content package.
     * \param text the source text
     * \param context its context, by which equal texts are told apart
     * \return the translation; by default \a text without a file, and an empty string when the file
     * lacks it
     */
    virtual QString translateString(const QString &text, const QString &context);

    /*!
     * The shortcut to show, by default the one written in the content. Asked at each show.
     *
     * \param key the key that was hovered, also when the fallback content is shown
     * \param object the control; null when show() was given none
     * \param shortcut the one in the content, empty when it has none
     * \return the shortcut; an empty one leaves the content's own
     */
    virtual QString shortCutForObject(const QString &key, QObject *object, const QString &shortcut);

    /*!
     * The settings in force; write here to change one at run time.
     * \return the library's copy, which lives as long as this object
     */
    HVContext &context();

    /*!
     * The settings in force, for reading.
     * \return the library's copy, which lives as long as this object
     */
    const HVContext &context() const;

    /*!
     * What there is content for. Reads all control files.
     * \return the keys, in file order; duplicates are kept
     */
    QStringList keys();

    /*!
     * For hosts that leave HVKeyTrackHover false: call this for every mouse move, from an event
     * filter on the application.
     *
     * \param object whose event it is; not looked at
     * \param event the move
     * \return false, so that the event goes on to its target
     */
    bool mouseMoveEventFilter(QObject *object, QMouseEvent *event);

    /*!
     * Likewise for every press and release of a mouse button: a click outside hides the popup.
     *
     * \param object whose event it is
     * \param event the press or release
     * \return false, so that the event goes on to its target
     */
    bool mouseButtonEventFilter(QObject *object, QMouseEvent *event);

    /*!
     * Shows the content for a key.
     *
     * \param key the content key
     * \param position where the cursor is: global, in pixels. The popup is beside it
     * \param object the control that the content describes; it may be null
     * \return true when a popup for the key, or for the fallback key, is or stays on screen
     */
    bool show(const QString &key, const QPoint &position, QObject *object);

    /*!
     * Names a value that texts may hold as "%(name)s". There is no way to remove it again.
     * \param name letters, digits, "-" and "_"
     * \param value what is shown, as a string; it may hold placeholders of its own
     */
    void setGlobalProperty(const QString &name, const QVariant &value);

    /*!
     * An attribute of the content for a key. Reads the files unless that is on screen.
     * \param key the content key
     * \param attribute its name
     * \param defaultValue what to answer when either is missing
     * \return the value as the content has it
     */
    QString hovletAttribute(const QString &key, const QString &attribute,
                            const QString &defaultValue);

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace Hovlets
