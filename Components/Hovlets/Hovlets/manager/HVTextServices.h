// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QVariant>

namespace Hovlets {

class HVManager;
class HVXmlElement;

/*!
 * \brief Values and attributes that content and hosts request by name, and links. GUI thread only.
 */
class HVTextServices
{
public:
    explicit HVTextServices(HVManager &manager);

    /// Values by placeholder name.
    [[nodiscard]] const QMap<QString, QVariant> &globalProperties() const;
    void setGlobalProperty(const QString &name, const QVariant &value);

    /*!
     * An attribute of the entry for \a key.
     *
     * \a onScreen is the visible content for the key, or null; then the entry is looked up.
     */
    QString hovletAttribute(const HVXmlElement *onScreen, const QString &key,
                            const QString &attribute, const QString &defaultValue) const;

    /// Asks the host to open \a resource if the settings allow its type.
    bool openExternalResource(const QString &resource) const;

private:
    HVManager &m_manager;
    QMap<QString, QVariant> m_globalProperties;
};

} // namespace Hovlets
