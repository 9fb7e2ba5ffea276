// Prints how soon the lock covers the screens when a protected application starts, and how soon a
// cold screen locker does.

#include "latency/Bench.h"

#include <exception>
#include <iostream>

namespace {

constexpr int RUNS = 30;

} // namespace

int main()
{
    try {
        latency::Bench bench;
        bench.measure(RUNS);
        bench.print();
        return 0;
    } catch (const std::exception& failure) {
        std::cerr << "cover-latency: " << failure.what() << '\n';
        return 1;
    }
}
