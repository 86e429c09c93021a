// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVContext.h"
#include "HVExport.h"

#include <QtCore/QLocale>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <memory>

class QXmlAttributes;

namespace Hovlets {

class HVXmlElement;

/*!
 * \brief Records the content packages and their control files, and finds the entry for a key.
 *
 * The default index keeps no entries: each look-up reads the control files, so that authors see an
 * edit at the next hover. A host whose content is not in control files derives from this class,
 * overrides retrieve() and keys(), and passes its index to HVInterface. The library then asks that
 * index for every entry; the files in which QML finds pictures and its user interface still come
 * from the packages recorded here. Do not derive from it to change what control files mean.
 *
 * GUI thread only. Files that cannot be read are skipped silently; those that are not well-formed
 * leave a line in Qt's debug output, in the category "hovlets.content".
 */
class HOVLETS_EXPORT HVIndex : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVIndex)

public:
    /*!
     * An empty index.
     * \param context the settings; not owned. If they are destroyed, the index uses empty ones
     * \param dataPaths the data paths of the host. Unused here; subclasses may need them
     */
    HVIndex(HVContext *context, const QStringList &dataPaths);
    ~HVIndex() override;

    /*!
     * Called once by the manager, before any content is indexed. Override it to open a database or
     * an archive. The result is unused; here it is true.
     */
    virtual bool open();

    /// Calls clear() unless HVKeyClearIndexOnSetup is false. The library never calls it.
    /// \return true
    virtual bool setup();

    /// Forgets what a subclass keeps. Does nothing here.
    /// \return whether it succeeded; true here
    virtual bool clear();

    /// The counterpart of open(). Does nothing here, and the library never calls it.
    /// \return whether it succeeded; true here
    virtual bool close();

    /// Deletes the storage of a subclass. Does nothing here, and the library never calls it.
    /// \return whether it succeeded; true here
    virtual bool remove();

    /*!
     * The entry for a key in a locale, or null. If several control files have it, the one that was
     * indexed last wins.
     *
     * The caller owns the entry and its root, and deletes both: return a new tree on every call.
     * The library asks for the preferred locale first and then for the fallback locale, while the
     * user waits; an index must answer within milliseconds.
     *
     * \param key the content key
     * \param locale the locale to look for; control files without a locale serve every locale
     * \param[out] path the folder of the control file. With \a depth it leads to the folder that
     * QML sees as the package \param[out] depth the number of folder levels from that folder down
     * to the control file, at least 1: 1 if \a path is the package folder, 2 if it is a folder in
     * it \param[out] root the element above the entry; unused after a null result. An entry with a
     * null root is not shown
     */
    virtual HVXmlElement *retrieve(const QString &key, const QLocale &locale, QString &path,
                                   int &depth, HVXmlElement *&root);

    /*!
     * Records the control file \a path after all others. The library never calls it; a subclass may
     * keep the element instead of the path.
     * \param element the entry; unused here
     * \param locale its locale; unused here
     * \param path path of the control file
     * \param depth its number of folder levels below the package, at least 1
     * \return whether it succeeded; true here
     */
    virtual bool store(HVXmlElement *element, const QLocale &locale, const QString &path,
                       int depth);

    /// Starts a group of changes, for subclasses that write them together. Here it only sets what
    /// isInUpdate() returns.
    virtual void startUpdate();

    /// Ends the group of changes that startUpdate() started.
    virtual void endUpdate();

    /*!
     * The keys of all entries in the order of files and then of entries, with duplicates. Reads and
     * parses every control file: do not call it while the user waits.
     */
    [[nodiscard]] virtual QStringList keys();

    /*!
     * Records a control file before all others, and its package. Files whose first start tag is not
     * "hovlets" are skipped.
     * \param file canonical path of the control file
     * \param location canonical path of its package folder
     */
    virtual void indexControlFile(const QString &file, const QString &location);

    /*!
     * Records a package folder under its package name.
     * \param file unused
     * \param location path of the package folder, or of something in it
     */
    void mapControlFile(const QString &file, const QString &location);

    /// The name of the package that \a location is, or is in; a null string outside of packages.
    [[nodiscard]] QString packageNameForLocation(const QString &location) const;

    /*!
     * The entry for a key from one control file, or null. The caller owns it and its root.
     *
     * The result is null if the file is for another locale, has the key twice, or its root element
     * does not close.
     *
     * \param key the content key
     * \param file path of the control file
     * \param locale the locale to look for
     * \param[out] root the element above the entry; only written on success
     */
    HVXmlElement *load(const QString &key, const QString &file, const QLocale &locale,
                       HVXmlElement *&root);

    /*!
     * Adds the attributes that the key-data file (HVKeyKeyDataFile) has for a key.
     * \param key the content key
     * \param location unused
     * \param element the entry to extend; not null
     */
    void loadKeyData(const QString &key, const QString &location, HVXmlElement *element);

    /// The folders of a package in the order of indexing, followed by HVKeyExtraComponentPath.
    [[nodiscard]] QStringList componentPathsForPackageNamed(const QString &name) const;

    /*!
     * The folders in which components of an entry are looked for: its package, the extra path, then
     * the packages named by its root's attribute "search".
     *
     * \param element the entry
     * \param fileName if not empty, the result is this relative path in each of the folders
     */
    [[nodiscard]] QStringList componentPathsForElement(const HVXmlElement *element,
                                                       const QString &fileName) const;

    /*!
     * The parser's callback for keys(): builds the root and the entries without their children.
     * \param qName the tag
     * \param attributes unused
     * \param userData unused
     * \return 1 (build, and ask for the children) for "hovlets" and "hovlet", else 4 (do not build)
     */
    static int indexDataShouldGenerateElement(const QString &qName,
                                              const QXmlAttributes &attributes, void *userData);

    /// The settings given at construction, or empty ones if those were destroyed.
    HVContext &context();

    /// The settings, for reading.
    [[nodiscard]] const HVContext &context() const;

protected:
    /// Whether a group of changes was started and not ended.
    [[nodiscard]] bool isInUpdate() const;

Q_SIGNALS:
    /*!
     * Emitted when a control file or the key-data file is skipped because it is not a regular file
     * or meets one of the HVLimits; once for each file and reason. The manager passes it to the
     * host as a warning. Subclasses may emit it, too. \param message names the file and the limit
     */
    void fileSkipped(const QString &message);

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace Hovlets
