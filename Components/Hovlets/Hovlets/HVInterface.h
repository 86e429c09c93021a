// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVExport.h"

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariant>

#include <memory>

class HVContext;
class QMouseEvent;
class QPoint;
class QWidget;

namespace Hovlets {

class HVIndex;

/// Severity of a message; a higher value is less severe.
enum HVMessageType : int {
    HVMessageError = 100,
    HVMessageWarning = 200,
    HVMessageInformation = 300,
    HVMessageDebug = 400
};

/// What kind of window HVInterface::createWindow() is asked for.
enum HVWindowType : int {
    /// A container for a popup that the user has pinned.
    HVReservedWindow = 1
};

/// What HVInterface::openExternalResource() is asked to open.
enum HVExternalResourceType : int {
    /// A documentation topic: neither an address with a scheme nor a path.
    HVDocumentationResource = 1,
    /// An address with a scheme, such as a web page.
    HVUrlResource = 2,
    /// A path: it contains "/" and is no address with a scheme.
    HVFileResource = 3
};

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
     * \a context is copied. \a index stays the host's and must live as long as this object; null
     * makes an index of the library's own. Folders that do not exist are skipped silently.
     */
    HVInterface(HVContext &context, const QStringList &dataPaths, HVIndex *index = nullptr);
    ~HVInterface() override;

    /*!
     * A window for a popup that the user has pinned, or null (the default) to let it become a tool
     * window of its own.
     *
     * The window stays the host's; the popup becomes its child, in its layout if it has one.
     */
    virtual QWidget *createWindow(HVWindowType type);

    /// The content key of \a object, by default its object name.
    virtual QString keyForObject(QObject *object);

    /*!
     * Opens \a resource and says whether that worked.
     *
     * By default addresses open in the desktop's browser; topics and files are not opened.
     */
    virtual bool openExternalResource(HVExternalResourceType type, const QString &resource);

    /// Takes a message; by default it becomes a line "level:message" of Qt's debug output.
    virtual void handleMessage(HVMessageType type, const QString &message);

    /// The translation of \a text, by default from the translation files of the content package.
    virtual QString translateString(const QString &text, const QString &context);

    /*!
     * The shortcut to show for \a object, by default \a shortcut, the one written in the content.
     *
     * An empty answer leaves the content's own.
     */
    virtual QString shortCutForObject(const QString &key, QObject *object, const QString &shortcut);

    /// The settings in force; write here to change one at run time.
    HVContext &context();
    const HVContext &context() const;

    /// Every content key, in file order; duplicates are kept. Reads all control files.
    QStringList keys();

    /*!
     * For hosts that leave HVKeyTrackHover false: call this for every mouse move, from an event
     * filter on the application. Always false, so the event goes on to its target.
     */
    bool mouseMoveEventFilter(QObject *object, QMouseEvent *event);

    /// Likewise for every press and release of a mouse button.
    bool mouseButtonEventFilter(QObject *object, QMouseEvent *event);

    /*!
     * Shows the content for \a key beside \a position (global, in pixels).
     *
     * \a object is the control that the content describes; it may be null. True when a popup for
     * the key, or for the fallback key, is or stays on screen.
     */
    bool show(const QString &key, const QPoint &position, QObject *object);

    /// Names a value that texts may hold as "%(name)s". There is no way to remove it again.
    void setGlobalProperty(const QString &name, const QVariant &value);

    /// The \a attribute of the content for \a key, or \a defaultValue when either is missing.
    QString hovletAttribute(const QString &key, const QString &attribute,
                            const QString &defaultValue);

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace Hovlets
