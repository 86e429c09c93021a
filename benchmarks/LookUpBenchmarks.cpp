// SPDX-License-Identifier: Apache-2.0
#include "Comparisons.h"
#include "GeneratedContent.h"
#include "HVContext.h"
#include "HVFileMemory.h"
#include "HVIndex.h"
#include "HVXmlElement.h"
#include "ParserPeers.h"
#include "PlainFile.h"
#include "Suites.h"

#include <QtCore/QByteArrayMatcher>

#include <cstring>
#include <sys/stat.h>

namespace {

using SearchBytes = bool (*)(std::string_view text, const std::string &key);

struct Peer
{
    const char *name;
    SearchBytes find;
};

bool findWithMemmem(std::string_view text, const std::string &key)
{
    return memmem(text.data(), text.size(), key.data(), key.size()) != nullptr;
}

bool findWithStringView(std::string_view text, const std::string &key)
{
    return text.find(key) != std::string_view::npos;
}

bool findWithQByteArray(std::string_view text, const std::string &key)
{
    return QByteArray::fromRawData(text.data(), static_cast<int>(text.size()))
            .contains(QByteArray::fromRawData(key.data(), static_cast<int>(key.size())));
}

constexpr Peer Searches[] = {
    { "memmem", findWithMemmem },
    { "string_view::find", findWithStringView },
    { "QByteArray::contains", findWithQByteArray },
};

constexpr Peer Parsers[] = {
    { "pugixml", findWithPugixml },
    { "libxml2 SAX", findWithLibxml2 },
    { "expat", findWithExpat },
    { "QXmlStreamReader", findWithQXmlStreamReader },
};

constexpr int Files = 1000;
constexpr int FileSize = 27000; // exceeded by the last entry of each file: 28 MB in total

const GeneratedContent &content()
{
    static const GeneratedContent content(Files, FileSize, 20);
    return content;
}

void addFiles(Hovlets::HVIndex &index)
{
    for (const QString &file : content().files())
        index.store(nullptr, QLocale(), file, 2);
}

bool isFound(Hovlets::HVIndex &index, const QString &key)
{
    QString path;
    int depth = 0;
    Hovlets::HVXmlElement *root = nullptr;
    const bool found =
            index.retrieve(key, QLocale(QStringLiteral("en_US")), path, depth, root) != nullptr;
    if (found)
        delete root;
    return found;
}

/// A look-up of one key, by the library and by its peers.
class LookUp
{
public:
    LookUp(const char *name, const QString &key, bool hit)
        : m_prefix(std::string("look-up ") + name + '/')
        , m_key(key)
        , m_hit(hit)
    {
    }

    void registerAll(Comparisons &comparisons) const
    {
        const std::string ours = m_prefix + "Hovlets";
        add(ours, [look = *this](benchmark::State &state) { look.retrieve(state); });

        std::vector<std::string> searches;
        // Every file contains the empty string, so the search is for the attribute.
        const std::string bytes = m_key.isEmpty() ? "key=\"\"" : m_key.toStdString();
        for (const Peer &peer : Searches)
            searches.push_back(addPeer(std::string("read + ") + peer.name, peer.find, bytes));
        comparisons.add(ours, searches, 1.5);
        for (const Peer &peer : Parsers) {
            const std::string name = std::string("read + ") + peer.name;
            comparisons.add(ours, { addPeer(name, peer.find, m_key.toStdString()) }, 1.0);
        }
    }

private:
    template <typename Function> static void add(const std::string &name, Function &&function)
    {
        benchmark::RegisterBenchmark(name.c_str(), std::forward<Function>(function))
                ->Unit(benchmark::kMillisecond)
                ->UseRealTime();
    }

    std::string addPeer(const std::string &name, SearchBytes find, const std::string &key) const
    {
        add(m_prefix + name,
            [find, key, hit = m_hit](benchmark::State &state) { scan(state, find, key, hit); });
        return m_prefix + name;
    }

    /// Uses a new index for each look-up, which has not read any of the files before.
    void retrieve(benchmark::State &state) const
    {
        for (auto _ : state) {
            state.PauseTiming();
            HVContext context;
            Hovlets::HVIndex index(&context, {});
            addFiles(index);
            state.ResumeTiming();
            if (isFound(index, m_key) != m_hit)
                state.SkipWithError("wrong answer");
        }
    }

    static void scan(benchmark::State &state, SearchBytes find, const std::string &key, bool hit)
    {
        std::vector<std::string> paths;
        for (const QString &file : content().files())
            paths.push_back(file.toStdString());
        PlainFile file;
        for (auto _ : state) {
            bool found = false;
            for (size_t i = 0; i < paths.size() && !found; ++i)
                found = find(file.readAll(paths[i]), key);
            if (found != hit)
                state.SkipWithError("wrong answer");
        }
    }

    std::string m_prefix;
    QString m_key;
    bool m_hit;
};

/// The look-ups of one tooltip over a label without content. Qt offers it to each parent in turn,
/// here eight frames without a name and the window. Each is looked up in both locales.
void askForLabelInFrames(benchmark::State &state)
{
    for (auto _ : state) {
        state.PauseTiming();
        HVContext context;
        Hovlets::HVIndex index(&context, {});
        addFiles(index);
        state.ResumeTiming();
        const Hovlets::HVToolTipPass pass(Hovlets::HVToolTipPass::next());
        bool found = false;
        for (int locale = 0; locale < 2; ++locale)
            found = isFound(index, QStringLiteral("label")) || found;
        for (int parent = 0; parent < 8; ++parent) {
            for (int locale = 0; locale < 2; ++locale)
                found = isFound(index, QString()) || found;
        }
        for (int locale = 0; locale < 2; ++locale)
            found = isFound(index, QStringLiteral("MainWindow")) || found;
        if (found)
            state.SkipWithError("wrong answer");
    }
}

/// Another look-up without a result, in files that have not changed since.
void missAgain(benchmark::State &state)
{
    HVContext context;
    Hovlets::HVIndex index(&context, {});
    addFiles(index);
    bool found = isFound(index, QStringLiteral("label"));
    for (auto _ : state)
        found = isFound(index, QStringLiteral("label")) || found;
    if (found)
        state.SkipWithError("wrong answer");
}

void askForStatus(benchmark::State &state)
{
    std::vector<std::string> paths;
    for (const QString &file : content().files())
        paths.push_back(file.toStdString());
    for (auto _ : state) {
        qint64 size = 0;
        for (const std::string &path : paths) {
            struct stat status = {};
            size += stat(path.c_str(), &status) == 0 ? status.st_size : 0;
        }
        benchmark::DoNotOptimize(size);
    }
}

void add(const char *name, void (*function)(benchmark::State &))
{
    benchmark::RegisterBenchmark(name, function)->Unit(benchmark::kMillisecond)->UseRealTime();
}

} // namespace

void registerLookUpBenchmarks(Comparisons &comparisons)
{
    // The key of a control without content: a name that Qt itself has set.
    LookUp("miss", QStringLiteral("qt_scrollarea_viewport"), false).registerAll(comparisons);
    LookUp("miss, key like others", QStringLiteral("mainWindow.dialog12.noSuchControl"), false)
            .registerAll(comparisons);
    LookUp("miss, empty key", QString(), false).registerAll(comparisons);
    LookUp("hit in the last file", GeneratedContent::key(Files - 1, 0), true)
            .registerAll(comparisons);

    const char *tooltip = "tooltip of a label in eight frames/Hovlets";
    add(tooltip, askForLabelInFrames);
    comparisons.add(tooltip, { "look-up miss/read + memmem" }, 1.5);
    const char *again = "look-up miss, again/Hovlets";
    const char *status = "look-up miss, again/status of each file";
    add(again, missAgain);
    add(status, askForStatus);
    comparisons.add(again, { status }, 1.5);
}
