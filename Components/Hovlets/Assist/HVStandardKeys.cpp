// SPDX-License-Identifier: Apache-2.0
#include <HovletsAssist/HVStandardKeys.h>

#include "HVEntryLookup.h"
#include "HVKeyRules.h"
#include "HVPartKeys.h"

#include <QtCore/QPoint>
#include <QtGui/QCursor>
#include <QtWidgets/QWidget>

#include <utility>

namespace Hovlets {

class HVStandardKeys::Private
{
public:
    HVInterface &host;
    HVStandardKeysSettings settings;
    HVKeyRules rules;
};

HVStandardKeys::HVStandardKeys(HVInterface &host, const HVStandardKeysSettings &settings)
    : d(new Private { host, settings, HVKeyRules(settings.rulesFile) })
{
}

HVStandardKeys::~HVStandardKeys() = default;

QString HVStandardKeys::keyFor(QObject *object)
{
    return find(object, QCursor::pos()).key;
}

HVKeyedControl HVStandardKeys::find(QObject *object, const QPoint &position)
{
    HVKeyedControl control;
    if (!object)
        return control;
    const HVControlKeys keys = keysAt(object, position, d->settings);
    control.path = keys.path;
    control.candidates = keys.keys();
    QVector<HVKeyCandidate> candidates = keys.candidates;
    const HVKeyCandidate *preferred = keys.preferred();
    HVKeyCandidate chosen = preferred ? *preferred : HVKeyCandidate();
    const auto rule = keys.isFixed ? std::nullopt
                                   : d->rules.keyFor(control.candidates + QStringList(keys.path));
    if (rule) {
        control.candidates.clear();
        if (rule->isEmpty())
            return control;
        if (chosen.area.isEmpty() && object->isWidgetType())
            chosen.area = areaOf(static_cast<QWidget *>(object));
        chosen.key = *rule;
        candidates.prepend(chosen);
        control.candidates += *rule;
        control.candidates += keys.keys();
        control.candidates.removeDuplicates();
    }
    for (const HVKeyCandidate &candidate : std::as_const(candidates)) {
        control.hasEntry = hasEntry(d->host, candidate.key);
        if (!control.hasEntry)
            continue;
        chosen = candidate;
        break;
    }
    control.key = chosen.key;
    control.area = chosen.area;
    return control;
}

QStringList HVStandardKeys::ruleErrors()
{
    return d->rules.errors();
}

} // namespace Hovlets
