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
 * \brief Knows the content packages and their control files, and finds the entry for a key.
 *
 * It keeps no content in memory: each look-up reads the control files anew, so edited content is
 * seen at the next hover. A host may substitute a subclass that keeps its content elsewhere.
 *
 * GUI thread only. Files that cannot be read are skipped silently; the parser reports those that
 * are not well-formed in Qt's debug output.
 */
class HOVLETS_EXPORT HVIndex : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVIndex)

public:
    /*!
     * An empty index.
     * \param context the settings; not owned. When it is gone, the index makes one of its own
     * \param dataPaths those of the host, for subclasses; not looked at here
     */
    HVIndex(HVContext *context, const QStringList &dataPaths);
    ~HVIndex() override;

    /*!
     * Called once by the manager, before any content is indexed. Does nothing here.
     * \return whether it worked; nobody asks
     */
    virtual bool open();

    /*!
     * Clears the index unless HVKeyClearIndexOnSetup is false.
     * \return true
     */
    virtual bool setup();

    /*!
     * Forgets the content, in subclasses that keep it. Does nothing here.
     * \return whether it worked
     */
    virtual bool clear();

    /*!
     * The counterpart of open(), for subclasses. Does nothing here, and the library never calls it.
     * \return whether it worked
     */
    virtual bool close();

    /*!
     * Deletes where a subclass keeps its content. Does nothing here, and the library never calls
     * it. \return whether it worked
     */
    virtual bool remove();

    /*!
     * The entry for a key; the file that was indexed last wins.
     *
     * The caller owns and deletes both, the entry and its root.
     *
     * \param key the content key
     * \param locale the locale that the file is to be for; files without one are for all
     * \param[out] path the folder of the control file
     * \param[out] depth its number of folder levels below the package, at least 1
     * \param[out] root the top of the returned tree, not to be used after a null answer
     * \return the entry, or null
     */
    virtual HVXmlElement *retrieve(const QString &key, const QLocale &locale, QString &path,
                                   int &depth, HVXmlElement *&root);

    /*!
     * Records a control file behind all others. A subclass may keep the element instead.
     * \param element the entry; not looked at here
     * \param locale its locale; not looked at here
     * \param path path of the control file
     * \param depth its number of folder levels below the package, at least 1
     * \return true
     */
    virtual bool store(HVXmlElement *element, const QLocale &locale, const QString &path,
                       int depth);

    /// Begins a bracket around several changes, for subclasses. Only isInUpdate() tells of it.
    virtual void startUpdate();

    /// Ends what startUpdate() began.
    virtual void endUpdate();

    /*!
     * The keys of all entries. Reads all control files.
     * \return in file order, then document order; duplicates are kept
     */
    virtual QStringList keys();

    /*!
     * Records a control file before all others, if its first start tag is "hovlets".
     *
     * \param file canonical path of the control file
     * \param location canonical path of the package folder that it lies in
     */
    virtual void indexControlFile(const QString &file, const QString &location);

    /*!
     * Records a package folder under its package name.
     * \param file not looked at
     * \param location path of the package folder, or of what lies in it
     */
    void mapControlFile(const QString &file, const QString &location);

    /*!
     * The name of the package that a path belongs to.
     * \param location path of the package folder, or of what lies in it
     * \return the name, or a null string when there is no package above
     */
    QString packageNameForLocation(const QString &location) const;

    /*!
     * The entry for a key from one control file. The caller owns and deletes it and its root.
     *
     * A file whose root names another locale, that holds the key twice or whose root element does
     * not close gives null.
     *
     * \param key the content key
     * \param file path of the control file
     * \param locale the locale that the file is to be for
     * \param[out] root the top of the returned tree; written on success only
     * \return the entry, or null
     */
    HVXmlElement *load(const QString &key, const QString &file, const QLocale &locale,
                       HVXmlElement *&root);

    /*!
     * Adds the attributes that the key-data file (HVKeyKeyDataFile) has for a key.
     * \param key the content key
     * \param location not looked at
     * \param element the entry to add to; not null
     */
    void loadKeyData(const QString &key, const QString &location, HVXmlElement *element);

    /*!
     * Where the components of a package lie.
     * \param name name of the package
     * \return its folders, in indexing order, then HVKeyExtraComponentPath
     */
    QStringList componentPathsForPackageNamed(const QString &name) const;

    /*!
     * Where the components of \a element lie, in search order: its own package, the extra path,
     * then the packages that its root's "search" names.
     *
     * \param element the entry
     * \param fileName a path in those folders, or empty
     * \return the folders, or, with a file name, the candidates for that file in them
     */
    QStringList componentPathsForElement(const HVXmlElement *element,
                                         const QString &fileName) const;

    /*!
     * What keys() asks the parser to build: roots and entries.
     * \param qName the tag
     * \param attributes those of the element; not looked at
     * \param userData not looked at
     * \return 1 for those (build, and ask again for the children), else 4 (do not build)
     */
    static int indexDataShouldGenerateElement(const QString &qName,
                                              const QXmlAttributes &attributes, void *userData);

    /*!
     * The settings.
     * \return those given at construction, or empty ones when they are gone
     */
    HVContext &context();

    /*!
     * The settings, for reading.
     * \return those given at construction, or empty ones when they are gone
     */
    const HVContext &context() const;

protected:
    /*!
     * For subclasses; the index itself never asks.
     * \return whether startUpdate() was called without endUpdate()
     */
    bool isInUpdate() const;

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace Hovlets
