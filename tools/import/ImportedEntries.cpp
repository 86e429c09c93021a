// SPDX-License-Identifier: Apache-2.0
#include "ImportedEntries.h"

#include <QtCore/QHash>
#include <QtCore/QSet>

#include <algorithm>

namespace HovletsTool {

namespace {

constexpr FormText FormObject::*Tips[] = { &FormObject::toolTip, &FormObject::statusTip,
                                           &FormObject::whatsThis };
constexpr FormText FormObject::*Texts[] = { &FormObject::toolTip, &FormObject::statusTip,
                                            &FormObject::whatsThis, &FormObject::label,
                                            &FormObject::shortcut };

/// Whether two texts differ, or their translations into any language.
bool differ(const FormText &one, const FormText &other,
            const std::vector<LinguistFile> &translations)
{
    constexpr auto Finished = LinguistFile::State::Finished;
    if (one.text != other.text)
        return true;
    return std::any_of(translations.begin(), translations.end(), [&](const LinguistFile &file) {
        const LinguistFile::Translation first = file.find(one);
        const LinguistFile::Translation second = file.find(other);
        return first.state == Finished && second.state == Finished && first.text != second.text;
    });
}

/// Whether a tip of one differs from that of the other.
bool contradict(const FormObject &one, const FormObject &other,
                const std::vector<LinguistFile> &translations)
{
    return std::any_of(std::begin(Tips), std::end(Tips), [&](FormText FormObject::*tip) {
        return !(one.*tip).isEmpty() && !(other.*tip).isEmpty()
                && differ(one.*tip, other.*tip, translations);
    });
}

/// Adds to \a object the texts that it lacks and \a other has, and the places of shared ones.
void complete(FormObject &object, const FormObject &other)
{
    for (FormText FormObject::*member : Texts) {
        FormText &text = object.*member;
        const FormText &more = other.*member;
        if (text.isEmpty())
            text = more;
        else if (text.text == more.text)
            text.places.insert(text.places.end(), more.places.begin(), more.places.end());
    }
}

QString qualifiedKey(const FormObject &object)
{
    return object.form + QLatin1Char('/') + object.name;
}

/// Fills an entry with the texts of a control.
ImportedEntry entryOf(const QString &key, const FormObject &object)
{
    ImportedEntry entry { key, {}, object.shortcut.text, {}, object.icon };
    QSet<QString> known;
    for (FormText FormObject::*tip : Tips) {
        for (const TipParagraph &paragraph : paragraphsOf((object.*tip).text)) {
            if (known.contains(paragraph.plain))
                continue;
            known.insert(paragraph.plain);
            entry.body.push_back(paragraph);
        }
    }
    if (entry.body.empty())
        return entry;
    const QString label = plainLabel(object.label.text);
    const QString first = entry.body.front().plain;
    if (!label.isEmpty() && !isTitle(first)) {
        entry.title = label;
        return entry;
    }
    entry.title = first;
    entry.body.erase(entry.body.begin());
    return entry;
}

/// Replaces the texts of a copy of a control with their translations.
class Translating
{
public:
    Translating(const ImportedControls::Control &control, const LinguistFile &translations,
                bool unfinished)
        : m_control(control)
        , m_translations(translations)
        , m_unfinished(unfinished)
    {
        for (FormText FormObject::*text : Texts)
            translate(m_control.object.*text);
    }

    ImportedEntry entry() const { return entryOf(m_control.key, m_control.object); }

    void count(TranslatedEntries &all) const
    {
        all.translated += m_translated;
        all.untranslated.insert(all.untranslated.end(), m_untranslated.begin(),
                                m_untranslated.end());
    }

    bool isAnyTranslated() const { return m_translated > 0; }

private:
    void translate(FormText &text)
    {
        if (text.isEmpty() || text.places.empty())
            return;
        const LinguistFile::Translation found = m_translations.find(text);
        const bool counts = found.state == LinguistFile::State::Finished
                || (m_unfinished && found.state == LinguistFile::State::Unfinished);
        if (counts) {
            ++m_translated;
            text.text = found.text;
        } else {
            m_untranslated.push_back({ m_control.key, text.text, found.state });
        }
    }

    ImportedControls::Control m_control;
    const LinguistFile &m_translations;
    bool m_unfinished;
    int m_translated = 0;
    std::vector<UntranslatedText> m_untranslated;
};

} // namespace

ImportedControls::ImportedControls(const std::vector<FormObject> &objects,
                                   const std::vector<LinguistFile> &translations, bool qualified)
{
    std::vector<std::vector<FormObject>> groups;
    QHash<QString, size_t> known;
    for (const FormObject &object : objects) {
        const QString group = qualified ? qualifiedKey(object) : object.name;
        if (!known.contains(group)) {
            known.insert(group, groups.size());
            groups.emplace_back();
        }
        groups[known.value(group)].push_back(object);
    }
    for (const std::vector<FormObject> &group : groups) {
        addSameNames(group, translations);
        if (qualified)
            m_controls.back().key = qualifiedKey(group.front());
    }
}

void ImportedControls::addSameNames(const std::vector<FormObject> &objects,
                                    const std::vector<LinguistFile> &translations)
{
    std::vector<FormObject> forms; // one object for each form
    for (const FormObject &object : objects) {
        const auto same = std::find_if(forms.begin(), forms.end(), [&](const FormObject &other) {
            return other.form == object.form;
        });
        if (same == forms.end())
            forms.push_back(object);
        else
            complete(*same, object);
    }
    FormObject whole = forms.front();
    const bool conflicts = std::any_of(forms.begin(), forms.end(), [&](const FormObject &form) {
        const bool differs = contradict(whole, form, translations);
        complete(whole, form);
        return differs;
    });
    if (!conflicts) {
        m_controls.push_back({ whole.name, whole });
        return;
    }
    QStringList names;
    for (const FormObject &form : forms) {
        names += form.form;
        m_controls.push_back({ qualifiedKey(form), form });
    }
    m_conflicts += QStringLiteral("%1 (%2)").arg(whole.name, names.join(QStringLiteral(", ")));
}

std::vector<ImportedEntry> ImportedControls::entries() const
{
    std::vector<ImportedEntry> entries;
    for (const Control &control : m_controls)
        entries.push_back(entryOf(control.key, control.object));
    return entries;
}

TranslatedEntries ImportedControls::translated(const LinguistFile &translations,
                                               bool unfinished) const
{
    TranslatedEntries all;
    for (const Control &control : m_controls) {
        const Translating translating(control, translations, unfinished);
        translating.count(all);
        const ImportedEntry entry = translating.entry();
        // A text may be translated to spaces.
        if (translating.isAnyTranslated() && !entry.title.isEmpty())
            all.entries.push_back(entry);
    }
    return all;
}

} // namespace HovletsTool
