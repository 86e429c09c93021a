// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "PackageFolder.h"

#include <QtCore/QList>

#include <functional>

/*!
 * \brief A hostile package, written to disk where it is needed.
 *
 * The control file has the key "attack". Everything else differs from input to input.
 */
class HostilePackage
{
public:
    explicit HostilePackage(PackageFolder &folder)
        : m_folder(folder)
    {
    }

    QString path(const QString &name) const;
    void write(const QString &name, const QByteArray &bytes) const;

    /// Writes the control file as it is.
    void control(const QByteArray &file) const;

    /// Writes the control file with one entry. The default user interface shows it.
    void entry(const QByteArray &attributes, const QByteArray &children,
               const QByteArray &prolog = {}) const;

    /// Replaces a file by a named pipe, a socket, a folder or a link.
    void pipe(const QString &name) const;
    void socket(const QString &name) const;
    void folder(const QString &name) const;
    void link(const QString &target, const QString &name) const;

private:
    void clear(const QString &name) const;

    PackageFolder &m_folder;
};

struct HostileInput
{
    using Step = std::function<void(const HostilePackage &package)>;

    const char *corpus;
    QByteArray name;
    Step make; ///< before the host starts
    Step change = {}; ///< after it has indexed the package
};

/// \a text, \a count times.
inline QByteArray times(int count, const char *text)
{
    return QByteArray(text).repeated(count);
}

// Each kind of attack in several sizes, grouped by the code that reads it.
QList<HostileInput> hostileDocuments(); ///< the parser
QList<HostileInput> hostileTexts(); ///< the popup
QList<HostileInput> hostileFiles(); ///< pictures, translations and files that are none
QList<HostileInput> hostileClips();
