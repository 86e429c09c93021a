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
 * \brief The class through which a host uses the library; creating it starts the library.
 *
 * The virtual operations are the library's questions to the host. Each has a default, so a host
 * derives from this class and overrides only what it needs, or nothing at all.
 *
 * Create one object after the QApplication and delete it before the QApplication ends. Deleting it
 * ends everything that the library runs; popups that the user has pinned stay. Do not create a
 * second one for the same windows: both would show popups.
 *
 * GUI thread only; the library calls the virtual operations on that thread, synchronously. While
 * the constructor indexes the content, the derived object does not exist yet, and messages go to
 * this class's handleMessage() instead of an override.
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
     * \param index where content is looked up. It stays the host's and must outlive this object.
     * Null creates the default index, which reads control files
     */
    HVInterface(HVContext &context, const QStringList &dataPaths, HVIndex *index = nullptr);

    /// Ends everything that the library runs; pinned popups stay.
    ~HVInterface() override;

    /*!
     * A window for a popup that the user has pinned, or null (the default) to make the popup itself
     * a tool window.
     *
     * The host owns the window. The popup becomes its child, in its layout if it has one.
     *
     * \param type the purpose of the window; always HVReservedWindow
     */
    virtual QWidget *createWindow(HVWindowType type);

    /*!
     * The content key of a control, by default its object name.
     * \param object what the mouse rests on, a widget or a window; never null
     * \return the key; an empty key has no content
     */
    virtual QString keyForObject(QObject *object);

    /*!
     * Opens the target of a link in the content. Called only if the settings allow that kind of
     * link.
     *
     * By default, addresses open in the desktop's browser; topics and files are not opened.
     *
     * \param type whether it is a topic, an address or a file
     * \param resource the target exactly as the content has it. Decide which files you open:
     * content may name any \return whether it was opened
     */
    virtual bool openExternalResource(HVExternalResourceType type, const QString &resource);

    /*!
     * Receives a message. By default, writes the line "level:message" to Qt's debug output.
     *
     * Messages above the severity in HVKeyMessageLevel are not sent. It may be called during any
     * other call into the library, so do not show a modal dialog here.
     */
    virtual void handleMessage(HVMessageType type, const QString &message);

    /*!
     * The translation of a text in the content; by default from the translation files of the
     * content package. \param text the source text \param context distinguishes equal texts; the
     * default user interface passes the entry's key \return the translation. By default, \a text if
     * there is no translation file, and an empty string if the file does not contain the text
     */
    virtual QString translateString(const QString &text, const QString &context);

    /*!
     * The shortcut to show; by default the one in the content. Called at each show.
     *
     * \param key the key of the control, even if the fallback content is shown
     * \param object the control; null if show() was called without one
     * \param shortcut the shortcut in the content, or an empty string
     * \return the shortcut; an empty string leaves that of the content
     */
    virtual QString shortCutForObject(const QString &key, QObject *object, const QString &shortcut);

    /// The current settings: the library's copy, which lives as long as this object. Write here to
    /// change a setting at run time.
    HVContext &context();

    /// The current settings, for reading.
    [[nodiscard]] const HVContext &context() const;

    /*!
     * The keys of all entries in the order of files, with duplicates. Reads every control file,
     * which may take seconds with much content: do not call it while the user waits.
     */
    QStringList keys();

    /*!
     * For hosts that leave HVKeyTrackHover false: call this for every mouse move, from an event
     * filter on the application.
     *
     * \param object the receiver of the event; unused
     * \param event the move
     * \return always false: the event must reach its receiver
     */
    bool mouseMoveEventFilter(QObject *object, QMouseEvent *event);

    /*!
     * The same for every press and release of a mouse button: a click outside of the popup hides
     * it.
     *
     * \param object the receiver of the event
     * \param event the press or release
     * \return always false: the event must reach its receiver
     */
    bool mouseButtonEventFilter(QObject *object, QMouseEvent *event);

    /*!
     * Shows the content for a key.
     *
     * \param key the content key
     * \param position the cursor, global, in pixels; the popup appears HVKeyCursorOffset from it
     * \param object the control that the content describes; may be null
     * \return true if a popup for the key, or for the fallback key, is or stays on screen
     */
    bool show(const QString &key, const QPoint &position, QObject *object);

    /*!
     * Sets the value of the placeholder "%(name)s" in texts of the content. It cannot be removed,
     * only replaced. \param name letters, digits, "-" and "_" \param value shown as a string, which
     * may contain placeholders itself
     */
    void setGlobalProperty(const QString &name, const QVariant &value);

    /*!
     * The value of an attribute of an entry, exactly as the content has it. Reads control files
     * unless the entry is on screen. \param key the content key \param attribute the name of the
     * attribute \param defaultValue the result if the entry or the attribute does not exist
     */
    QString hovletAttribute(const QString &key, const QString &attribute,
                            const QString &defaultValue);

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace Hovlets
