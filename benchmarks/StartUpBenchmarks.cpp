// SPDX-License-Identifier: Apache-2.0
#include "Comparisons.h"
#include "GeneratedContent.h"
#include "HVContext.h"
#include "HVManager.h"
#include "PlainFile.h"
#include "Suites.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <chrono>
#include <memory>

namespace {

constexpr size_t FirstBytes = 1024;
constexpr int FileSize = 1200;

/// A data path, written when the first benchmark needs it.
class DataPath
{
public:
    DataPath(int files, int filesPerPackage)
        : m_files(files)
        , m_filesPerPackage(filesPerPackage)
    {
    }

    const GeneratedContent &operator*()
    {
        if (!m_content)
            m_content = std::make_unique<GeneratedContent>(m_files, FileSize, m_filesPerPackage);
        return *m_content;
    }

    int files() const { return m_files; }

private:
    int m_files;
    int m_filesPerPackage;
    std::unique_ptr<GeneratedContent> m_content;
};

using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

/// Starts the library: the manager indexes the path.
void startLibrary(benchmark::State &state, DataPath &data)
{
    const QStringList paths { (*data).path() };
    for (auto _ : state) {
        HVContext context;
        const Clock::time_point start = Clock::now();
        const Hovlets::HVManager manager(nullptr, context, paths, nullptr);
        state.SetIterationTime(secondsSince(start)); // without the shutdown
    }
}

/// Lists the control folders and reads the start of each file, with system calls.
void readPlainly(benchmark::State &state, DataPath &data)
{
    std::vector<std::string> folders;
    for (const QString &folder : (*data).controlFolders())
        folders.push_back(folder.toStdString());
    PlainFile file;
    for (auto _ : state) {
        const Clock::time_point start = Clock::now();
        int files = 0;
        for (const std::string &folder : folders) {
            for (const std::string &path : PlainFile::listXml(folder))
                files += file.read(path, FirstBytes).empty() ? 0 : 1;
        }
        state.SetIterationTime(secondsSince(start));
        if (files != data.files())
            state.SkipWithError("wrong number of files");
    }
}

/// The same with Qt's classes.
void readWithQt(benchmark::State &state, DataPath &data)
{
    for (auto _ : state) {
        const Clock::time_point start = Clock::now();
        int files = 0;
        for (const QString &folder : (*data).controlFolders()) {
            const QDir directory(folder);
            const QStringList names = directory.entryList(
                    { QStringLiteral("*.xml") }, QDir::Files | QDir::Readable, QDir::NoSort);
            for (const QString &name : names) {
                QFile file(directory.filePath(name));
                files += file.open(QIODevice::ReadOnly) && !file.read(FirstBytes).isEmpty() ? 1 : 0;
            }
        }
        state.SetIterationTime(secondsSince(start));
        if (files != data.files())
            state.SkipWithError("wrong number of files");
    }
}

void add(const std::string &name, void (*run)(benchmark::State &, DataPath &),
         const std::shared_ptr<DataPath> &data)
{
    benchmark::RegisterBenchmark(name.c_str(),
                                 [run, data](benchmark::State &state) { run(state, *data); })
            ->Unit(benchmark::kMillisecond)
            ->UseManualTime();
}

/// Registers all three for a data path. Returns the name of the library's benchmark.
std::string registerFor(Comparisons &comparisons, const std::string &name, int files,
                        int filesPerPackage)
{
    const auto data = std::make_shared<DataPath>(files, filesPerPackage);
    const std::string prefix = "start-up " + name + '/';
    add(prefix + "Hovlets", startLibrary, data);
    add(prefix + "opendir + open + read", readPlainly, data);
    add(prefix + "QDir + QFile", readWithQt, data);
    comparisons.add(prefix + "Hovlets", { prefix + "opendir + open + read" }, 2.0);
    comparisons.add(prefix + "Hovlets", { prefix + "QDir + QFile" }, 2.0);
    return prefix + "Hovlets";
}

} // namespace

void registerStartUpBenchmarks(Comparisons &comparisons)
{
    const std::string few = registerFor(comparisons, "1,000 files", 1000, 20);
    const std::string many = registerFor(comparisons, "20,000 files", 20000, 20);
    const std::string fewInOne = registerFor(comparisons, "1,000 files, 1 package", 1000, 1000);
    const std::string manyInOne = registerFor(comparisons, "20,000 files, 1 package", 20000, 20000);
    // Twenty times as many files should take about twenty times as long.
    comparisons.add(many, { few }, 25.0);
    comparisons.add(manyInOne, { fewInOne }, 25.0);
}
