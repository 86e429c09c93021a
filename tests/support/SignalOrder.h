// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QMetaMethod>
#include <QtCore/QMetaProperty>
#include <QtCore/QObject>
#include <QtCore/QStringList>

#include <mutex>
#include <vector>

/*!
 * \brief Records an object's signals in the order of their emission, from any thread. QSignalSpy
 * supports only one thread.
 */
class SignalOrder
{
    Q_DISABLE_COPY_MOVE(SignalOrder)

public:
    SignalOrder() = default;
    ~SignalOrder()
    {
        for (const auto &connection : m_connections)
            QObject::disconnect(connection);
    }

    template <typename Sender, typename Signal>
    void note(Sender *sender, Signal signal, const QString &name)
    {
        m_connections += QObject::connect(
                sender, signal, sender, [this, name] { add(name); }, Qt::DirectConnection);
    }

    void add(const QString &name)
    {
        const std::lock_guard<std::mutex> locker(m_mutex);
        m_names.push_back(name);
    }

    QStringList names() const
    {
        const std::lock_guard<std::mutex> locker(m_mutex);
        return list();
    }

    int count(const QString &name) const { return int(names().count(name)); }

    /// The signals recorded since the last call.
    QStringList take()
    {
        const std::lock_guard<std::mutex> locker(m_mutex);
        const QStringList taken = list();
        m_names.clear();
        return taken;
    }

private:
    QStringList list() const { return QStringList(m_names.begin(), m_names.end()); }

    mutable std::mutex m_mutex;
    std::vector<QString> m_names; // not shared with the copies that take() returns
    QList<QMetaObject::Connection> m_connections;
};

/// The signatures of a class's own methods of one kind, in declaration order.
inline QStringList ownMethods(const QMetaObject &type, QMetaMethod::MethodType kind)
{
    QStringList signatures;
    for (int i = type.methodOffset(); i < type.methodCount(); ++i) {
        if (type.method(i).methodType() == kind)
            signatures += QString::fromLatin1(type.method(i).methodSignature());
    }
    return signatures;
}

/// "type name rw notify" of a class's own properties, in declaration order.
inline QStringList ownProperties(const QMetaObject &type)
{
    QStringList properties;
    for (int i = type.propertyOffset(); i < type.propertyCount(); ++i) {
        const QMetaProperty property = type.property(i);
        properties +=
                QStringLiteral("%1 %2 %3%4 %5")
                        .arg(QLatin1String(property.typeName()), QLatin1String(property.name()),
                             property.isReadable() ? QStringLiteral("r") : QString(),
                             property.isWritable() ? QStringLiteral("w") : QString(),
                             QLatin1String(property.notifySignal().name()));
    }
    return properties;
}
