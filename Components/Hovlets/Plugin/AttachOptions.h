// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariant>

class HVContext;

namespace Hovlets {

/*!
 * \brief What the plug-in reads from the file that its environment variable names.
 *
 * The file is a JSON object; docs/attach.md describes it. Relative paths start at its folder.
 */
struct AttachOptions
{
    /// Folders of packages.
    QStringList dataPaths;

    /// Values of settings by name, such as "HVKeyLocale", or by number.
    QMap<QString, QVariant> settings;

    /// File with rules for keys; empty for none.
    QString rules;

    /// The author's package, which entries are written to. Empty: nothing is recorded.
    QString record;

    /// The file to write what is on screen to; empty for none.
    QString report;

    /// The file to write the controls and their texts to; empty for none.
    QString inventory;

    /// Reads a file. Adds a line to \a errors for each mistake and continues without it.
    static AttachOptions read(const QString &file, QStringList &errors);

    /// Writes the settings. Adds a line to \a errors for each that the library does not know.
    void applyTo(HVContext &context, QStringList &errors) const;
};

} // namespace Hovlets
