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
    if (known == m_files.end() || mayServe(*known, key, locale))
        return true;
    const quint64 pass = HVToolTipPass::current();
    const bool isThisPass = pass != 0 && known->pass == pass;
    if (isThisPass && known->status.isSettled())
        return false;
    const HVFileStatus status(file);
    const bool isUnchanged =
            known->status.isSameAs(status) || (isThisPass && known->status.looksLike(status));
    if (isUnchanged)
        known->pass = pass;
    return !isUnchanged;
}

bool HVFileMemory::mayServe(const Known &known, const HVEntryScan &key, const QLocale &locale)
{
    if (!known.keys->mayHold(key) || known.refused.contains(key.plainKey()))
        return false;
    return known.locale.isEmpty() || QLocale(known.locale) == locale;
}

HVFileMemory::Keys HVFileMemory::remember(const QString &file, const HVFileBytes &read)
{
    const auto same = m_files.find(file);
    if (same != m_files.end() && same->status.isSameAs(read.status)) {
        same->pass = HVToolTipPass::current();
        return same->keys;
    }
    Known known;
    known.status = read.status;
    known.keys = std::make_shared<HVEntryKeys>(read.bytes);
    known.pass = HVToolTipPass::current();
    return m_files.insert(file, known)->keys;
}

void HVFileMemory::rememberRefusal(const QString &file, const Keys &keys, const HVEntryScan &key)
{
    constexpr int MostRefused = 1000; // far more than controls under the pointer

    const auto known = m_files.find(file);
    if (known == m_files.end() || known->keys != keys || key.plainKey().isNull())
        return;
    if (known->refused.size() == MostRefused)
        known->refused.clear();
    known->refused.insert(key.plainKey());
}

void HVFileMemory::rememberLocale(const QString &file, const QString &locale)
{
    const auto known = m_files.find(file);
    if (known != m_files.end())
        known->locale = locale;
}

} // namespace Hovlets
