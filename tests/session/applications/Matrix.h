// Every application, started in every way: one row each.
#pragma once

#include "session/applications/Stage.h"

#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace applications {

class Matrix
{
public:
    /// Runs the rows of one part of several. Throws `Failure` when no desktop comes up.
    void run(std::size_t part, std::size_t parts);

    void print(std::ostream& out) const;

    /// True when at least one row ran, all that ran are well, and none lacks its application.
    [[nodiscard]] bool passed() const;

private:
    struct Row
    {
        std::size_t index = 0;
        Application application;
        std::string excuse; // why it cannot run
        std::vector<std::string> cells;
        bool well = true;
    };

    void runRow(Row& row);
    void runOpen(Row& row);
    void runLocked(Row& row);
    static void note(Row& row, const Problem& problem);

    std::unique_ptr<Stage> open;   // nothing is protected
    std::unique_ptr<Stage> locked; // everything is
    std::vector<Row> rows;
};

} // namespace applications
