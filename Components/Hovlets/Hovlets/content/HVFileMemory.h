// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVEntryScan.h"
#include "HVFileBytes.h"

#include <QtCore/QHash>
#include <QtCore/QLocale>
#include <QtCore/QSet>
#include <QtCore/QString>

#include <memory>

namespace Hovlets {

/*!
 * \brief Marks the period in which Qt offers one tooltip to a control and its parents, or in which
 * one entry is looked up in two locales. The status of each file is queried only once during it.
 * Files whose time stamps are too recent are the exception: each is read once while its status
 * remains the same.
 *
 * Construct one around each look-up for the tooltip. GUI thread only; scopes nest.
 */
class HVToolTipPass
{
    Q_DISABLE_COPY_MOVE(HVToolTipPass)

public:
    /// \a number identifies the tooltip; see next().
    explicit HVToolTipPass(quint64 number) noexcept;
    ~HVToolTipPass();

    /// A number for a new tooltip.
    [[nodiscard]] static quint64 next() noexcept;

    /// The number of the innermost scope; 0 outside any scope.
    [[nodiscard]] static quint64 current() noexcept;

private:
    quint64 m_outer;
};

/*!
 * \brief Remembers the keys and the locale of each control file that was read.
 *
 * Most controls under the pointer have no entry, and Qt offers their tooltip to each parent in
 * turn. For keys that a file does not have or cannot serve, its status then suffices, and its bytes
 * are not read. Entries are not stored: a file that may have the key, or may have changed, is read
 * again. GUI thread only.
 */
class HVFileMemory
{
public:
    /// False if the file has not changed since it was read and cannot serve \a key in \a locale.
    [[nodiscard]] bool mayHold(const QString &file, const HVEntryScan &key, const QLocale &locale);

    using Keys = std::shared_ptr<HVEntryKeys>;

    /// Remembers a file that was read, and returns its keys, which the caller may complete.
    Keys remember(const QString &file, const HVFileBytes &read);

    /// Remembers that the file cannot serve \a key, although it may have such an entry. Does
    /// nothing if the file was read again since \a keys were returned.
    void rememberRefusal(const QString &file, const Keys &keys, const HVEntryScan &key);

    /// Remembers the locale in the file's root element, if it has one.
    void rememberLocale(const QString &file, const QString &locale);

private:
    struct Known
    {
        HVFileStatus status;
        Keys keys;
        QSet<QByteArray> refused; // keys of entries that cannot be served
        quint64 pass = 0; // last pass in which the file was read or found unchanged
        QString locale; // empty if unknown, or if the file serves every locale
    };

    static bool mayServe(const Known &known, const HVEntryScan &key, const QLocale &locale);

    QHash<QString, Known> m_files;
};

} // namespace Hovlets
