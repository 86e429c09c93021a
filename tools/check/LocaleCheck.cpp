// SPDX-License-Identifier: Apache-2.0
#include "ControlFile.h"
#include "EntryCheck.h"
#include "Findings.h"

#include <QtCore/QMap>

#include <algorithm>

namespace HovletsTool {

namespace {

/// Whether \a winner, which comes first, answers in every locale of \a loser.
bool hides(const ControlFile &winner, const ControlFile &loser)
{
    return winner.isForAllLocales()
            || (!loser.isForAllLocales() && winner.isFor(QLocale(loser.locale())));
}

void checkShadows(const ControlFiles &files, FindingList &findings)
{
    for (auto file = files.begin(); file != files.end(); ++file) {
        for (const ControlFile::Entry &entry : file->entries()) {
            const auto winner = std::find_if(files.begin(), file, [&](const ControlFile &other) {
                return hides(other, *file) && other.serves(entry.key);
            });
            if (winner == file || !file->serves(entry.key))
                continue;
            const QString locale = file->isForAllLocales()
                    ? QStringLiteral("every locale")
                    : QStringLiteral("the locale ") + file->locale();
            findings.add("HV203", file->path(), file->position(entry),
                         QStringLiteral("in %1, the entry \"%2\" in %3, which is indexed later, "
                                        "is shown instead")
                                 .arg(locale, entry.key, winner->path()));
        }
    }
}

struct Place
{
    const ControlFile *file;
    const ControlFile::Entry *entry;
};

bool isAnswered(const std::vector<Place> &places, const QString &locale)
{
    return std::any_of(places.begin(), places.end(),
                       [&](const Place &place) { return place.file->isFor(QLocale(locale)); });
}

} // namespace

void checkLocales(const ControlFiles &files, const QString &fallback, const QStringList &required,
                  FindingList &findings)
{
    checkShadows(files, findings);
    QMap<QString, std::vector<Place>> keys;
    for (const ControlFile &file : files) {
        for (const ControlFile::Entry &entry : file.entries()) {
            if (!entry.key.isEmpty())
                keys[entry.key].push_back({ &file, &entry });
        }
    }
    for (auto key = keys.cbegin(); key != keys.cend(); ++key) {
        const Place &place = key->front();
        const Position position = place.file->position(*place.entry);
        if (!isAnswered(*key, fallback))
            findings.add("HV207", place.file->path(), position,
                         QStringLiteral("\"%1\" has no entry for the fallback locale %2, which is "
                                        "used when a reader's locale has none")
                                 .arg(key.key(), fallback));
        for (const QString &locale : required) {
            if (!isAnswered(*key, locale))
                findings.add("HV208", place.file->path(), position,
                             QStringLiteral("\"%1\" has no entry for the locale %2")
                                     .arg(key.key(), locale));
        }
    }
}

} // namespace HovletsTool
