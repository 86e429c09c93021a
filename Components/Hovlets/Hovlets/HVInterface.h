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
 * The virtual functions are the library's questions to the host. Each has a default, so a host
 * derives from this class and overrides only what it needs, or nothing at all.
 *
 * Create one object after the QApplication, which it needs, and delete it before the QApplication.
 * Deleting it ends everything that the library runs; popups that the user has pinned stay. Do not
 * create a second one for the same windows: both would show popups.
 *
 * GUI thread only. The library calls the virtual functions on that thread, synchronously and while
 * the user waits. They may run an event loop, show or close popups and delete controls, but must
 * not delete this object. Nothing throws: failures are results and messages.
 *
 * While the constructor indexes the content, the derived object does not exist yet, and messages go
 * to this class's handleMessage() instead of an override.
 */
class HOVLETS_EXPORT HVInterface : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVInterface)

public:
    /*!
     * Indexes the packages in \a dataPaths and, with HVKeyTrackHover, starts to watch the mouse.
     *
     * Returns when all packages are indexed.
     *
     * \param context the settings; they are copied
     * \param dataPaths folders of packages; those that do not exist are skipped silently
     * \param index where content is looked up; not owned, and must outlive this object. Null
     * creates the default index, which reads control files
     */
    HVInterface(HVContext &context, const QStringList &dataPaths, HVIndex *index = nullptr);

    /// Ends everything that the library runs; pinned popups stay.
    ~HVInterface() override;

    /*!
     * A window for a popup that the user is pinning, or null (the default) to make the popup itself
     * a tool window, which is deleted when it is closed.
     *
     * The host owns the window. The popup becomes its child, in its layout if it has one, and is
     * deleted with it. The library sets the title and shows the window; a top-level window moves to
     * the popup's position and is closed with the popup. Set Qt::WA_DeleteOnClose if closing must
     * delete it.
     *
     * \param type the purpose of the window: always HVReservedWindow. Return null for other values
     */
    virtual QWidget *createWindow(HVWindowType type);

    /*!
     * The content key of a control, by default its object name. Called when the mouse rests: for
     * the innermost widget first, then for each of its parents, until one shows a popup or an
     * ordinary tooltip. While a popup is visible, also called when the mouse moves to another part
     * of its control, such as another tab. HVCoverage calls it for all controls.
     * \param object a widget or a window; with the helper library also an action. Never null from
     * the library, but the default accepts null
     * \return the key; an empty key finds no content
     */
    virtual QString keyForObject(QObject *object);

    /*!
     * Opens the target of a link in the content. Called only if the settings allow that kind of
     * link.
     *
     * By default, addresses open in the desktop's browser; topics and files are not opened.
     *
     * \param type whether it is a topic, an address or a file
     * \param resource the target exactly as it is in the content, which may name any file. Decide
     * which ones you open
     * \return whether it was opened
     */
    virtual bool openExternalResource(HVExternalResourceType type, const QString &resource);

    /*!
     * Receives a message. By default, writes the line "level:message" to Qt's debug output.
     *
     * Only messages with a type up to HVKeyMessageLevel are sent, by default errors and warnings.
     * The library may call this function during any other call, so do not show a modal dialog here.
     */
    virtual void handleMessage(HVMessageType type, const QString &message);

    /*!
     * The translation of a text in the content; by default from the translation files of the
     * content's package. Called whenever a user interface shows a text.
     * \param text the source text
     * \param context distinguishes equal texts; the default user interface passes the entry's key
     * \return the translation; an empty string if there is none. By default, \a text if there is no
     * translation file, and an empty string if the file does not contain the text
     */
    virtual QString translateString(const QString &text, const QString &context);

    /*!
     * The shortcut to show; by default the one in the content. Called at each show. The spelling
     * with a capital "C" is deliberate: overrides in hosts rely on it.
     *
     * \param key the key of the control, even if the fallback content is shown
     * \param object the control; null if show() was called without one, or for a whole HVScene
     * \param shortcut the shortcut in the content, or an empty string
     * \return the shortcut; an empty string leaves that of the content
     */
    virtual QString shortCutForObject(const QString &key, QObject *object, const QString &shortcut);

    /// The current settings: the library's copy, which exists as long as this object. Write to it
    /// to change a setting at run time.
    HVContext &context();

    /// The current settings, for reading.
    [[nodiscard]] const HVContext &context() const;

    /*!
     * The keys of all entries, with duplicates. By default, the control file that was indexed last
     * comes first. Parses every control file, which may take seconds with much content: do not call
     * it while the user waits.
     */
    QStringList keys();

    /*!
     * Informs the library about a mouse move. Call it for every move, from an event filter on the
     * application, if HVKeyTrackHover is false.
     *
     * \param object the receiver of the event; unused
     * \param event the move
     * \return always false: the event must reach its receiver
     */
    bool mouseMoveEventFilter(QObject *object, QMouseEvent *event);

    /*!
     * Informs the library about a press or release of a mouse button. Call it for every one, if
     * HVKeyTrackHover is false. A click outside the popup hides it.
     *
     * \param object the receiver of the event
     * \param event the press or release
     * \return always false: the event must reach its receiver
     */
    bool mouseButtonEventFilter(QObject *object, QMouseEvent *event);

    /*!
     * Shows the content for a key: the entry in the preferred locale, else, with
     * HVKeyLanguageFallback, in its language, else in the fallback locale, else the entry for
     * HVKeyFallbackKey. If there is none of these, a visible popup stays if the
     * mouse is near it, and hides otherwise.
     *
     * \param key the content key
     * \param position the cursor, global, in pixels. The popup appears HVKeyCursorOffset from it,
     * unless HVKeyPlacement puts it beside the control
     * \param object the control that the content describes; may be null. The popup hides when a
     * control that is a widget does
     * \return true if a popup shows or stays: suppress the ordinary tooltip then. False while
     * HVKeySuspended or HVKeyRequiredModifiers forbid popups
     */
    bool show(const QString &key, const QPoint &position, QObject *object);

    /*!
     * Sets the value of the placeholder "%(name)s" in texts of the content. A value can be
     * replaced, but not removed. Texts on screen do not change.
     * \param name letters, digits, "-" and "_"
     * \param value shown as a string, which may contain placeholders itself. With a value that
     * converts to a null string, the placeholder stays visible
     */
    void setGlobalProperty(const QString &name, const QVariant &value);

    /*!
     * The value of an attribute of an entry, not translated. If the entry was the latest that a
     * popup showed, or is pinned, the value is the one that was shown, with the host's shortcut.
     * Otherwise reads control files, in the locales of show() but without HVKeyFallbackKey.
     * \param key the content key
     * \param attribute the name of the attribute
     * \param defaultValue the result if the entry or the attribute does not exist
     */
    QString hovletAttribute(const QString &key, const QString &attribute,
                            const QString &defaultValue);

    /*!
     * Encodes the pinned popups that are open, for restoreState() in a later run: their keys,
     * locales, positions, sizes that the user gave them, and whether they stay on top. The bytes
     * carry a version of their format.
     */
    [[nodiscard]] QByteArray saveState() const;

    /*!
     * Brings pinned popups back, in addition to those that are open. Call it once the host's window
     * is visible: they belong to the active window, else to the first one.
     *
     * Omits popups whose key no longer has content. Bytes that are damaged, or that saveState() did
     * not produce, restore nothing and send one warning.
     *
     * \param state the bytes from saveState(); need not be trusted
     * \return whether the state was valid
     */
    bool restoreState(const QByteArray &state);

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace Hovlets
