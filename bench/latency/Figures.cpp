#include "latency/Figures.h"

#include <algorithm>
#include <cmath>
#include <iomanip>
#include <sstream>

namespace latency {

namespace {

constexpr double MEDIAN = 50;
constexpr double NEARLY_ALL = 99;

template <typename Field> std::vector<double> valuesOf(const std::vector<Run>& runs, Field field)
{
    std::vector<double> values;
    for (const Run& run : runs) {
        if ((run.*field).has_value()) {
            values.push_back(*(run.*field));
        }
    }
    return values;
}

void writeTimes(std::ostringstream& text, const std::vector<double>& values)
{
    if (values.empty()) {
        text << std::setw(10) << "-" << std::setw(10) << "-";
    } else {
        text << std::setw(10) << percentile(values, MEDIAN) << std::setw(10)
             << percentile(values, NEARLY_ALL);
    }
}

} // namespace

double percentile(std::vector<double> values, double percent)
{
    std::sort(values.begin(), values.end());
    const double rank = std::ceil(percent / 100 * static_cast<double>(values.size()));
    return values[static_cast<std::size_t>(std::max(rank, 1.0)) - 1];
}

std::vector<double> Figures::coverTimes() const
{
    return valuesOf(runs, &Run::covered);
}

std::string Figures::row(double reference) const
{
    const std::vector<double> times = coverTimes();
    const auto seen =
        std::count_if(runs.begin(), runs.end(), [](const Run& run) { return run.seen; });
    std::ostringstream text;
    text << std::fixed << std::setprecision(2) << std::left << std::setw(14) << name << std::right
         << std::setw(4) << runs.size() << std::setw(9) << times.size();
    writeTimes(text, times);
    writeTimes(text, valuesOf(runs, &Run::mapped));
    text << std::setw(7) << seen;
    if (!times.empty() && reference > 0) {
        text << std::setw(9) << percentile(times, MEDIAN) / reference;
    }
    return text.str();
}

std::string tableHead()
{
    return "                            covered, ms         own map, ms      pixels   ratio to\n"
           "started       runs  covered    median       p99    median       p99   seen   i3lock";
}

} // namespace latency
