// Runs every application of the matrix, and prints the table. A row that cannot run says why, and
// does not count as passed; the whole fails where that is because an application is missing.
//   applications [PART PARTS]     one part of several, to run them side by side
#include "desktop/SessionProcesses.h"
#include "session/applications/Matrix.h"

#include <exception>
#include <iostream>
#include <span>
#include <string>

int main(int argc, char** argv)
{
    const std::span arguments(argv, static_cast<std::size_t>(argc));
    if (arguments.size() != 1 && arguments.size() != 3) {
        std::cerr << "usage: applications [PART PARTS]\n";
        return 2;
    }
    try {
        const bool inParts = arguments.size() == 3;
        const std::size_t part = inParts ? std::stoul(arguments[1]) : 1;
        const std::size_t parts = inParts ? std::stoul(arguments[2]) : 1;
        desktop::adoptOrphans();
        applications::Matrix matrix;
        matrix.run(part, parts);
        matrix.print(std::cout);
        return matrix.passed() ? 0 : 1;
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << "\n";
        return 1;
    }
}
