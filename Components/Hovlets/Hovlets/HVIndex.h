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
 * The default index stores no entries, so authors see an edit at the next hover. A look-up reads
 * the control files that have its key and those that changed since they were last read. A host with
 * content from elsewhere derives from this class, overrides retrieve() and keys(), and passes its
 * index to HVInterface. The library then asks that index for every entry, while user interfaces,
 * pictures and clips still come from the packages recorded here. Do not derive from it to change
 * the meaning of control files.
 *
 * GUI thread only. Files that cannot be read are skipped silently; those that are not well-formed
 * leave a line in Qt's debug output, in the category "hovlets.content". Nothing throws.
 */
class HOVLETS_EXPORT HVIndex : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVIndex)

public:
    /*!
     * An empty index.
     *
     * An index supplied by the host exists before the interface and therefore refers to the host's
     * settings, not to the copy that HVInterface::context() returns. After a change there, change
     * \a context as well if it concerns packages, key data or extra components.
     * \param context the settings; not owned. If null or destroyed, the index uses defaults
     * \param dataPaths the data paths of the host; unused here
     */
    HVIndex(HVContext *context, const QStringList &dataPaths);
    ~HVIndex() override;

    /*!
     * Called once by HVInterface's constructor, before any content is indexed. Override it to open
     * a database or an archive. The library ignores the result.
     * \return whether it succeeded; true here
     */
    virtual bool open();

    /// Calls clear() unless HVKeyClearIndexOnSetup is false. The library never calls it.
    /// \return true
    virtual bool setup();

    /// Removes the content that a subclass stores. Does nothing here.
    /// \return whether it succeeded; true here
    virtual bool clear();

    /// The counterpart of open(). Does nothing here, and the library never calls it.
    /// \return whether it succeeded; true here
    virtual bool close();

    /// Deletes the storage of a subclass. Does nothing here, and the library never calls it.
    /// \return whether it succeeded; true here
    virtual bool remove();

    /*!
     * The entry for a key in a locale, or null. If several control files have it, the file that was
     * indexed last takes precedence.
     *
     * The caller takes ownership of the entry and its root and deletes both: return a new tree on
     * every call. The library asks for the preferred locale first and then for the fallback locale,
     * with HVKeyLanguageFallback for the preferred language in between, while the user waits:
     * answer within milliseconds.
     *
     * An override must set the attribute "key" of the entry, by which the library recognises what
     * is on screen. It should also set "HVPackagName" (spelled without the "e"), the package in
     * which the user interface, pictures and clips are searched, or the root's attribute "search".
     * The key-data file is not applied: call loadKeyData() for that.
     *
     * \param key the content key; may be empty
     * \param locale the locale to look for; control files without a locale serve every locale
     * \param[out] path the folder of the control file. With \a depth it leads to the folder that
     * QML sees as the package
     * \param[out] depth the number of folder levels from that folder down to the control file, at
     * least 1: 1 if \a path is the package folder, 2 if it is a folder in it
     * \param[out] root the element above the entry, usually its parent; unused after a null result.
     * An entry with a null root is not shown
     */
    virtual HVXmlElement *retrieve(const QString &key, const QLocale &locale, QString &path,
                                   int &depth, HVXmlElement *&root);

    /*!
     * Records the control file \a path after all others, so every other file takes precedence over
     * it. The library never calls it; a subclass may store the element instead of the path.
     * \param element the entry; unused here
     * \param locale its locale; unused here
     * \param path path of the control file
     * \param depth its number of folder levels below the package, at least 1
     * \return whether it succeeded; true here
     */
    virtual bool store(HVXmlElement *element, const QLocale &locale, const QString &path,
                       int depth);

    /// Starts a group of changes, for subclasses that write them together. Here it only changes the
    /// result of isInUpdate(), and the library never calls it. Groups do not nest.
    virtual void startUpdate();

    /// Ends the group of changes that startUpdate() started. The library never calls it.
    virtual void endUpdate();

    /*!
     * The keys of all entries, with duplicates, for HVInterface::keys(). The file that was indexed
     * last comes first; within a file, the keys are in document order. Parses every control file:
     * do not call it while the user waits.
     */
    [[nodiscard]] virtual QStringList keys();

    /*!
     * Records a control file and its package. The file takes precedence over all that were recorded
     * before. The library calls it for each candidate that it finds in the data paths. Files whose
     * first start tag is not "hovlets", and files outside \a location, are skipped. An override
     * that does not call this implementation must call mapControlFile(), or QML finds no files of
     * the package.
     * \param file canonical path of the control file
     * \param location canonical path of its package folder
     */
    virtual void indexControlFile(const QString &file, const QString &location);

    /*!
     * Records a folder under the name of the package that it is, or is in. QML finds files there.
     * \param file unused
     * \param location path of the folder, usually the package folder itself
     */
    void mapControlFile(const QString &file, const QString &location);

    /// The name of the innermost package that contains \a location or is at it; a null string
    /// outside packages. Reads the disk.
    [[nodiscard]] QString packageNameForLocation(const QString &location) const;

    /*!
     * The entry for a key from one control file, or null. The caller takes ownership of \a root,
     * which is the parent of the entry.
     *
     * The result is null if the file is for another locale or has the key twice, or if its root
     * element is not closed.
     *
     * \param key the content key
     * \param file path of the control file
     * \param locale the locale to look for
     * \param[out] root the element above the entry; only written on success
     */
    HVXmlElement *load(const QString &key, const QString &file, const QLocale &locale,
                       HVXmlElement *&root);

    /*!
     * Adds the attributes for a key from the key-data file (HVKeyKeyDataFile), if there is one.
     * They replace existing attributes.
     * \param key the content key
     * \param location unused
     * \param element the entry to extend; not null
     */
    void loadKeyData(const QString &key, const QString &location, HVXmlElement *element);

    /// The folders recorded for a package in the order of indexing, then HVKeyExtraComponentPath.
    [[nodiscard]] QStringList componentPathsForPackageNamed(const QString &name) const;

    /*!
     * The folders in which components of an entry are searched, in this order: its package, the
     * extra path, then the packages named by its root's attribute "search".
     *
     * \param element the entry; for null, the result is empty
     * \param fileName if not empty, the result is this relative path in each of the folders,
     * whether or not it exists
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

    /// The settings given at construction, or defaults if there are none or they were destroyed.
    HVContext &context();

    /// The settings, for reading.
    [[nodiscard]] const HVContext &context() const;

protected:
    /// Whether a group of changes was started and not ended.
    [[nodiscard]] bool isInUpdate() const;

Q_SIGNALS:
    /*!
     * Emitted when a control file or the key-data file is skipped because it is not a regular file
     * or meets one of the HVLimits; once for each file and reason. The library passes it to the
     * host as a warning. Subclasses may emit it, too. \param message names the file and the limit
     */
    void fileSkipped(const QString &message);

private:
    friend QStringList searchFolders(const HVIndex &index, const HVXmlElement *element);

    class Private;
    std::unique_ptr<Private> d;
};

} // namespace Hovlets
