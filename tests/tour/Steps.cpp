#include "tour/Steps.h"

#include <chrono>
#include <exception>
#include <iomanip>
#include <iostream>

namespace tour {

namespace {

using Clock = std::chrono::steady_clock;

void say(Clock::duration time, const char* verdict, const std::string& text)
{
    const double seconds = std::chrono::duration<double>(time).count();
    std::cout << std::fixed << std::setprecision(3) << std::setw(8) << seconds << " s  " << verdict
              << "  " << text << std::endl;
}

} // namespace

void Steps::carryOut(const std::string& name, const Action& action)
{
    if (!held) {
        return;
    }
    const auto start = Clock::now();
    try {
        const std::string what = action();
        say(Clock::now() - start, "held", name + (what.empty() ? "" : ": " + what));
    } catch (const std::exception& failure) {
        held = false;
        say(Clock::now() - start, "FAILED", name + ": " + failure.what());
    }
}

} // namespace tour
