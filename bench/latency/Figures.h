// What was measured, and what is said of it.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace latency {

/// One start; times in milliseconds from just before the program was executed.
struct Run
{
    std::optional<double> covered;
    std::optional<double> mapped;
    bool seen = false; // a pixel of the application
};

/// Nearest rank; the values need not be in order, and there is at least one.
double percentile(std::vector<double> values, double percent);

struct Figures
{
    std::string name;
    std::vector<Run> runs;

    [[nodiscard]] std::vector<double> coverTimes() const;

    /// One row of the table; `reference` is the median that the ratio is to.
    [[nodiscard]] std::string row(double reference) const;
};

std::string tableHead();

} // namespace latency
