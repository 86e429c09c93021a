// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVExport.h"

#include <QtCore/QLocale>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <memory>

class HVContext;
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
    /// \a context is not owned; when it is gone, the index makes one of its own.
    HVIndex(HVContext *context, const QStringList &dataPaths);
    ~HVIndex() override;

    /// Called once by the manager, before any content is indexed. Does nothing here.
    virtual bool open();

    /// Clears the index unless HVKeyClearIndexOnSetup is false.
    virtual bool setup();

    virtual bool clear();
    virtual bool close();
    virtual bool remove();

    /*!
     * The entry for \a key in \a locale, or null; the file that was indexed last wins.
     *
     * On success \a path is the folder of the control file, \a depth its number of folder levels
     * below the data path's package (at least 1), and \a root the top of the returned tree. The
     * caller owns and deletes both, the entry and its root. After null they are not to be used.
     */
    virtual HVXmlElement *retrieve(const QString &key, const QLocale &locale, QString &path,
                                   int &depth, HVXmlElement *&root);

    /// Records the control file \a path at \a depth, behind all others; always true.
    virtual bool store(HVXmlElement *element, const QLocale &locale, const QString &path,
                       int depth);

    virtual void startUpdate();
    virtual void endUpdate();

    /// The keys of all entries, in file order, then document order; duplicates are kept.
    virtual QStringList keys();

    /*!
     * Records \a file, in the package folder \a location, before all others, if its first start
     * tag is "hovlets".
     */
    virtual void indexControlFile(const QString &file, const QString &location);

    /// Records the package folder \a location under its package name; \a file is not looked at.
    void mapControlFile(const QString &file, const QString &location);

    /// The name of the package that \a location is or lies in, or a null string.
    QString packageNameForLocation(const QString &location) const;

    /*!
     * The entry for \a key from one control \a file, or null.
     *
     * A file whose root names another locale, that holds the key twice or whose root element does
     * not close gives null. \a root is written on success only.
     */
    HVXmlElement *load(const QString &key, const QString &file, const QLocale &locale,
                       HVXmlElement *&root);

    /// Adds the attributes that the key-data file (HVKeyKeyDataFile) has for \a key.
    void loadKeyData(const QString &key, const QString &location, HVXmlElement *element);

    /// The folders of a package, in indexing order, then HVKeyExtraComponentPath.
    QStringList componentPathsForPackageNamed(const QString &name) const;

    /*!
     * Where the components of \a element lie, in search order: its own package, the extra path,
     * then the packages that its root's "search" names.
     *
     * With a \a fileName, the candidates for that file in those folders.
     */
    QStringList componentPathsForElement(const HVXmlElement *element,
                                         const QString &fileName) const;

    /// What keys() asks the parser to build: roots and entries. Answers 1 for those, else 4.
    static int indexDataShouldGenerateElement(const QString &qName,
                                              const QXmlAttributes &attributes, void *userData);

    HVContext &context();
    const HVContext &context() const;

protected:
    /// Whether startUpdate() was called without endUpdate(). The index itself never asks.
    bool isInUpdate() const;

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace Hovlets
