// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVFileBytes.h"

#include <QtCore/QList>
#include <QtCore/QSet>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <functional>
#include <memory>

class QObject;

namespace Hovlets {

class HVEntryKeys;
class HVEntryScan;
class HVXmlElement;
class HVXmlParser;

/*!
 * \brief Reads control files and the key-data file within the limits.
 *
 * Reports a file that is skipped once for each reason. GUI thread only.
 */
class HVControlFileReader
{
public:
    /// Called with a message for each file that is skipped.
    using Report = std::function<void(const QString &message)>;

    explicit HVControlFileReader(Report report);

    HVFileBytes read(const QString &file);

    /// The elements at the top of \a file, whose content is \a bytes. The caller owns them.
    QList<QObject *> parse(HVXmlParser &parser, const QString &file, const QByteArray &bytes);

    /*!
     * The root element of \a file with the entry for \a key as its only child, or null if the file
     * has no such entry or several, or if the root is not closed.
     *
     * \a scan is that for the key. If \a keys are incomplete, the parser completes them.
     */
    std::unique_ptr<HVXmlElement> entry(const QString &key, const HVEntryScan &scan,
                                        const QString &file, const QByteArray &bytes,
                                        HVEntryKeys &keys);

    /// The keys of the entries in \a file, as HVIndex::keys() lists them.
    QStringList keys(const QString &file);

    /// Reports that \a file is skipped, unless \a reason is null.
    void reportSkipped(const QString &file, const QString &reason);

    /// Copies the attributes that the key-data file \a file has for \a key to \a element.
    void addKeyData(const QString &key, const QString &file, HVXmlElement &element);

private:
    void reportTooLarge(const QString &file);

    Report m_report;
    QSet<QString> m_reported;
};

} // namespace Hovlets
