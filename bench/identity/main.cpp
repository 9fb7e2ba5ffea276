// What it costs to find out which application a process is, the reading of its facts included, and
// to read and to reread the catalogue. Real processes, and a catalogue of 1,000 entries.
#include "desktop/ChildProcess.h"
#include "desktop/TemporaryFolder.h"
#include "desktop/Wait.h"
#include "linux/proc/ProcFilesystem.h"
#include "linux/xdg/ApplicationCatalogue.h"
#include "linux/xdg/XdgApplicationIndex.h"

#include <chrono>
#include <filesystem>
#include <string>

#include <benchmark/benchmark.h>

namespace {

constexpr int ENTRIES = 1000;

/// A catalogue, and a program and a script that are applications of it.
class World
{
public:
    World()
    {
        std::filesystem::create_directories(applications());
        std::filesystem::copy_file("/bin/sleep", folder.path() / "program");
        desktop::writeFile(folder.path() / "script", "#!/bin/sh\nexec 3<&0\nsleep 600; :\n");
        std::filesystem::permissions(folder.path() / "script", std::filesystem::perms::owner_all);
        for (int number = 0; number < ENTRIES; ++number) {
            add("id" + std::to_string(number), "/usr/bin/program" + std::to_string(number));
        }
        add("program", (folder.path() / "program").string());
        add("script", (folder.path() / "script").string());
        environment.dataFolders = {(folder.path() / "share").string()};
        environment.programFolders = {"/usr/bin", "/bin"};
    }

    [[nodiscard]] std::filesystem::path applications() const
    {
        return folder.path() / "share/applications";
    }

    void add(const std::string& id, const std::string& exec) const
    {
        desktop::writeFile(
            applications() / (id + ".desktop"),
            "[Desktop Entry]\nType=Application\nName=" + id + "\nExec=" + exec + "\n"
        );
    }

    desktop::TemporaryFolder folder;
    xdg::XdgEnvironment environment;
};

World& world()
{
    static World instance;
    return instance;
}

/// As it is done at each exec.
void identify(benchmark::State& state, const std::vector<std::string>& command, bool expected)
{
    xdg::ApplicationCatalogue catalogue(
        world().environment, xdg::Roles::shipped(), [](std::string_view) {}
    );
    const xdg::XdgApplicationIndex index(catalogue);
    const proc::ProcFilesystem processes;
    desktop::ChildProcess child({.arguments = command, .environment = {{"PATH", "/usr/bin:/bin"}}});
    desktop::waitUntil(
        [&] { return !processes.arguments(child.id()).empty(); }, std::chrono::seconds(5)
    );
    bool found = false;
    for (auto ignored : state) {
        const auto facts = processes.facts(child.id(), [&](pid_t, const std::string& executable) {
            return index.mayBeApplication(executable);
        });
        found = facts && index.ofProcess(*facts) != nullptr;
        benchmark::DoNotOptimize(found);
    }
    if (found != expected) {
        state.SkipWithError("the process is mistaken for another");
    }
}

void nobody(benchmark::State& state)
{
    identify(state, {"/usr/bin/sleep", "600"}, false);
}

void nobodysScript(benchmark::State& state)
{
    identify(state, {"/bin/sh", "-c", "sleep 600; :"}, false);
}

void program(benchmark::State& state)
{
    identify(state, {(world().folder.path() / "program").string(), "600"}, true);
}

void script(benchmark::State& state)
{
    identify(state, {(world().folder.path() / "script").string()}, true);
}

void catalogueAnew(benchmark::State& state)
{
    for (auto ignored : state) {
        xdg::Choice nobodyChosen;
        xdg::CatalogueBuilder builder(world().environment, xdg::Roles::shipped());
        benchmark::DoNotOptimize(builder.build(nobodyChosen));
    }
}

/// One entry was written, as an installation does.
void catalogueAfterAChange(benchmark::State& state)
{
    xdg::Choice nobodyChosen;
    xdg::CatalogueBuilder builder(world().environment, xdg::Roles::shipped());
    builder.build(nobodyChosen);
    for (auto ignored : state) {
        state.PauseTiming();
        world().add("id7", "/usr/bin/program7");
        state.ResumeTiming();
        xdg::FolderChanges changes;
        changes.folders = {world().applications().string()};
        builder.forget(changes);
        benchmark::DoNotOptimize(builder.build(nobodyChosen));
    }
}

void figures(benchmark::internal::Benchmark* benchmark, benchmark::TimeUnit unit)
{
    constexpr int REPETITIONS = 9;
    constexpr double SECONDS = 0.1;
    benchmark->Unit(unit)->MinTime(SECONDS)->Repetitions(REPETITIONS)->ReportAggregatesOnly(true);
}

} // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    figures(benchmark::RegisterBenchmark("nobody's process", nobody), benchmark::kMicrosecond);
    figures(benchmark::RegisterBenchmark("nobody's shell", nobodysScript), benchmark::kMicrosecond);
    figures(benchmark::RegisterBenchmark("match of a program", program), benchmark::kMicrosecond);
    figures(benchmark::RegisterBenchmark("match of a script", script), benchmark::kMicrosecond);
    figures(
        benchmark::RegisterBenchmark("1,000 entries read", catalogueAnew), benchmark::kMillisecond
    );
    figures(
        benchmark::RegisterBenchmark("1,000 entries after a change", catalogueAfterAChange),
        benchmark::kMillisecond
    );
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
