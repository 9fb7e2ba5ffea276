#include "session/applications/Matrix.h"

#include <algorithm>
#include <filesystem>
#include <iostream>

#include <unistd.h>

namespace applications {

namespace {

constexpr auto WELL = "yes";
constexpr auto NONE = "-";
constexpr auto NOT_INSTALLED = "not installed";

std::string excuseFor(const Application& application)
{
    const std::string entry = "/usr/share/applications/" + application.id + ".desktop";
    if (application.entry.empty() && !std::filesystem::exists(entry)) {
        return NOT_INSTALLED;
    }
    return application.refusesRoot && getuid() == 0 ? "does not run as root" : "";
}

} // namespace

void Matrix::run(std::size_t part, std::size_t parts)
{
    open = std::make_unique<Stage>(false);
    locked = std::make_unique<Stage>(true);
    const std::vector<Application>& all = open->applications();
    for (std::size_t index = part - 1; index < all.size(); index += parts) {
        rows.push_back({index, all[index], excuseFor(all[index]), {}, true});
        Row& row = rows.back();
        if (row.excuse.empty()) {
            runRow(row);
        }
    }
    open.reset();
    locked.reset();
}

void Matrix::note(Row& row, const Problem& problem)
{
    row.cells.push_back(problem.value_or(WELL));
    row.well = row.well && !problem;
}

void Matrix::runRow(Row& row)
{
    const auto begin = Chronicle::Clock::now();
    runOpen(row);
    runLocked(row);
    const std::chrono::duration<double> took = Chronicle::Clock::now() - begin;
    std::cerr << row.application.id << ": " << took.count() << " s";
    for (const std::string& cell : row.cells) {
        std::cerr << ", " << cell;
    }
    std::cerr << std::endl;
}

void Matrix::runOpen(Row& row)
{
    const Application& application = row.application;
    Problem problem = open->start(application, Stage::Way::Entry);
    note(row, problem);
    problem = problem ? problem : open->startAgain(application);
    note(row, problem);
    const Problem end = open->end(application);
    note(row, end);
    problem = open->start(application, Stage::Way::Shell);
    const Problem shellEnd = open->end(application);
    note(row, problem ? problem : shellEnd);
    if (application.busCall.empty()) {
        row.cells.emplace_back(NONE);
        return;
    }
    problem = open->start(application, Stage::Way::Bus);
    const Problem busEnd = open->end(application);
    note(row, problem ? problem : busEnd);
}

void Matrix::runLocked(Row& row)
{
    const Application& application = locked->applications()[row.index];
    Problem problem = locked->startLocked(application, Stage::Way::Entry);
    note(row, problem);
    problem = locked->startAgainLocked(application);
    const Problem end = locked->endLocked(application);
    note(row, problem ? problem : end);
    if (application.busCall.empty()) {
        row.cells.emplace_back(NONE);
        return;
    }
    problem = locked->startLocked(application, Stage::Way::Bus);
    const Problem busEnd = locked->endLocked(application);
    note(row, problem ? problem : busEnd);
}

void Matrix::print(std::ostream& out) const
{
    out << "| application | how it starts | by its entry | again | its end | from a shell | by the "
           "bus | locked | again locked | by the bus locked |\n"
           "|---|---|---|---|---|---|---|---|---|---|\n";
    for (const Row& row : rows) {
        out << "| " << row.application.id << " | " << row.application.kind << " |";
        if (!row.excuse.empty()) {
            out << " not run: " << row.excuse << " | | | | | | | |\n";
            continue;
        }
        for (const std::string& cell : row.cells) {
            out << " " << cell << " |";
        }
        out << "\n";
    }
}

bool Matrix::passed() const
{
    const bool ran =
        std::any_of(rows.begin(), rows.end(), [](const Row& row) { return row.excuse.empty(); });
    return ran && std::all_of(rows.begin(), rows.end(), [](const Row& row) {
               return row.well && row.excuse != NOT_INSTALLED;
           });
}

} // namespace applications
