// SPDX-License-Identifier: Apache-2.0
#include "LocaleCheck.h"

#include "ControlFile.h"
#include "Findings.h"

#include <QtCore/QHash>
#include <QtCore/QLocale>

#include <algorithm>

namespace HovletsTool {

namespace {

/// A name that is equal for all spellings of a locale; empty for all locales.
QString canonicalName(const QString &name)
{
    const QLocale locale(name);
    return name.isEmpty() ? QString() : locale.name() + QString::number(locale.script());
}

/// The entries with one key, in the order in which the library searches them.
class KeyEntries
{
public:
    struct Place
    {
        const EntryList *file = nullptr;
        const EntryList::Entry *entry = nullptr;
        size_t order = 0;
    };

    /// Returns the earlier entry that is shown instead of \a place in all its locales, or null.
    const Place *add(const Place &place, const QString &locale)
    {
        if (!m_first.file)
            m_first = place;
        const auto known = find(locale);
        if (known == m_places.end())
            m_places.push_back({ locale, place.entry->isServed ? place : Place() });
        if (!place.entry->isServed)
            return nullptr;
        const Place *general = firstServed(QString());
        Place &own = find(locale)->firstServed;
        if (!own.file)
            own = place;
        const Place *winner = general && general->order < own.order ? general : &own;
        return winner->order < place.order ? winner : nullptr;
    }

    /// Whether there is an entry, served or not, for \a locale.
    [[nodiscard]] bool answers(const QString &locale)
    {
        return find(QString()) != m_places.end() || find(locale) != m_places.end();
    }

    /// The first entry, which stands for all of them.
    [[nodiscard]] const Place &first() const { return m_first; }

private:
    struct InLocale
    {
        QString locale;
        Place firstServed;
    };

    std::vector<InLocale>::iterator find(const QString &locale)
    {
        return std::find_if(m_places.begin(), m_places.end(),
                            [&](const InLocale &each) { return each.locale == locale; });
    }

    const Place *firstServed(const QString &locale)
    {
        const auto found = find(locale);
        return found == m_places.end() || !found->firstServed.file ? nullptr : &found->firstServed;
    }

    std::vector<InLocale> m_places; // at most one for each locale
    Place m_first;
};

void addShadow(const KeyEntries::Place &loser, const KeyEntries::Place &winner,
               FindingList &findings)
{
    const QString locale = loser.file->locale.isEmpty()
            ? QStringLiteral("every locale")
            : QStringLiteral("the locale ") + loser.file->locale;
    findings.add("HV203", loser.file->path, loser.entry->position,
                 QStringLiteral("in %1, the entry \"%2\" in %3, which is indexed later, is shown "
                                "instead")
                         .arg(locale, loser.entry->key, winner.file->path));
}

} // namespace

void checkLocales(const std::vector<EntryList> &files, const QString &fallback,
                  const QStringList &required, FindingList &findings)
{
    QHash<QString, KeyEntries> keys;
    size_t order = 0;
    for (const EntryList &file : files) {
        const QString locale = canonicalName(file.locale);
        for (const EntryList::Entry &entry : file.entries) {
            const KeyEntries::Place place { &file, &entry, ++order };
            if (const KeyEntries::Place *winner = keys[entry.key].add(place, locale))
                addShadow(place, *winner, findings);
        }
    }
    const QString fallbackName = canonicalName(fallback);
    for (auto key = keys.begin(); key != keys.end(); ++key) {
        if (key.key().isEmpty())
            continue;
        const KeyEntries::Place &place = key->first();
        if (!key->answers(fallbackName))
            findings.add("HV207", place.file->path, place.entry->position,
                         QStringLiteral("\"%1\" has no entry for the fallback locale %2, which is "
                                        "used when a reader's locale has none")
                                 .arg(key.key(), fallback));
        for (const QString &locale : required) {
            if (!key->answers(canonicalName(locale)))
                findings.add("HV208", place.file->path, place.entry->position,
                             QStringLiteral("\"%1\" has no entry for the locale %2")
                                     .arg(key.key(), locale));
        }
    }
}

} // namespace HovletsTool
