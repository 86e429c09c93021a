// SPDX-License-Identifier: Apache-2.0
#include "HVFileMemory.h"

#include <utility>

namespace Hovlets {

namespace {

quint64 currentPass = 0;

} // namespace

HVToolTipPass::HVToolTipPass(quint64 number) noexcept
    : m_outer(std::exchange(currentPass, number))
{
}

HVToolTipPass::~HVToolTipPass()
{
    currentPass = m_outer;
}

quint64 HVToolTipPass::next() noexcept
{
    static quint64 last = 0; // shared by all managers, because they may share an index
    return ++last;
}

quint64 HVToolTipPass::current() noexcept
{
    return currentPass;
}

bool HVFileMemory::mayHold(const QString &file, const HVEntryScan &key, const QLocale &locale)
{
    const auto known = m_files.find(file);
    if (known == m_files.end())
        return true;
    if (known->keys.mayHold(key) && (known->locale.isEmpty() || QLocale(known->locale) == locale))
        return true;
    const quint64 pass = HVToolTipPass::current();
    if (pass != 0 && known->pass == pass)
        return false;
    if (!known->status.isSameAs(HVFileStatus(file)))
        return true;
    known->pass = pass;
    return false;
}

const HVEntryKeys &HVFileMemory::remember(const QString &file, const HVFileBytes &read)
{
    const quint64 pass = read.status.isSettled() ? HVToolTipPass::current() : 0;
    return m_files.insert(file, { read.status, HVEntryKeys(read.bytes), pass, QString() })->keys;
}

void HVFileMemory::rememberLocale(const QString &file, const QString &locale)
{
    const auto known = m_files.find(file);
    if (known != m_files.end())
        known->locale = locale;
}

} // namespace Hovlets
