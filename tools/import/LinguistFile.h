// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "FormReader.h"

#include <QtCore/QString>

#include <map>
#include <tuple>
#include <vector>

namespace HovletsTool {

/// The translations into one language in files of Qt Linguist.
class LinguistFile
{
public:
    enum class State {
        Finished,
        Unfinished, ///< there is a text, but the translator has not confirmed it
        Missing,
    };

    struct Translation
    {
        State state = State::Missing;
        QString text = {};
    };

    struct Source
    {
        QString context, text, comment;

        bool operator<(const Source &other) const
        {
            return std::tie(context, text, comment)
                    < std::tie(other.context, other.text, other.comment);
        }
    };

    /// Throws a ToolError for a file that cannot be read or that names no known language, neither
    /// in its root element nor in the file's name, such as app_de.ts.
    explicit LinguistFile(const QString &path);

    [[nodiscard]] QString locale() const { return m_locale; }

    [[nodiscard]] Translation find(const FormText &text) const;

    /// Adds the translations of \a other that are missing or unfinished here.
    void add(const LinguistFile &other);

    /// The texts that have a translation, finished or not, or had one when they were in use.
    [[nodiscard]] std::vector<Source> translatedTexts() const;

private:
    void read(const QString &path);
    void add(const Source &source, const Translation &translation);

    QString m_locale;
    std::map<Source, Translation> m_translations;
};

} // namespace HovletsTool
