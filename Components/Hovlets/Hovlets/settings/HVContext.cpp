// SPDX-License-Identifier: Apache-2.0
#include "HVContext.h"

#include "HVSettings.h"

#include <QtCore/QMap>

class HVContext::Private
{
public:
    QMap<HVContextKey, QVariant> settings;
};

HVContext::HVContext(QObject *parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
    // Queued connections and spies look up the parameter type of the signals by this name.
    static const int type = qRegisterMetaType<HVContextKey>("HVContextKey");
    Q_UNUSED(type)
}

HVContext::HVContext(const HVContext &other)
    : QObject(nullptr)
    , d(std::make_unique<Private>(*other.d))
{
}

HVContext::~HVContext() = default;

HVContext &HVContext::operator=(const HVContext &other)
{
    if (this != &other)
        d->settings = other.d->settings;
    return *this;
}

bool HVContext::contains(const HVContextKey &key) const
{
    return d->settings.contains(key);
}

QVariant HVContext::get(const HVContextKey &key, const QVariant &defaultValue) const
{
    return d->settings.value(key, defaultValue);
}

QVariant HVContext::get(const HVContextKey &key) const
{
    const auto value = d->settings.constFind(key);
    return value != d->settings.cend() ? *value : Hovlets::defaultOf(key);
}

QList<HVContextKey> HVContext::keys() const
{
    return d->settings.keys();
}

void HVContext::set(const HVContextKey &key, const QVariant &value)
{
    Q_EMIT settingWillChange(key);
    d->settings.insert(key, value);
    Q_EMIT settingDidChange(key);
}
