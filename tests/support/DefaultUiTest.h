// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "DefaultUiBench.h"

#include <QtTest/QtTest>

#include <memory>

/*!
 * \brief Base class of tests of the default user interface. Any QML message fails them.
 */
class DefaultUiTest : public QObject
{
    Q_OBJECT

protected:
    /// Creates a bench with one entry, without showing it.
    void make(const QByteArray &attributes, const QByteArray &children = {})
    {
        m_bench = std::make_unique<DefaultUiBench>(DefaultUiBench::entry(attributes, children));
    }

    void showEntry(const QByteArray &attributes, const QByteArray &children = {})
    {
        make(attributes, children);
        QVERIFY(m_bench->show());
    }

    std::unique_ptr<DefaultUiBench> m_bench;

protected Q_SLOTS:
    void cleanup()
    {
        if (m_bench)
            QCOMPARE(m_bench->complaints(), QStringList());
        m_bench.reset();
    }
};
