// Runs every application of the matrix that is installed, and prints the table. A row that cannot
// run says why, and does not count as passed.
//   applications FILE [PART PARTS]     FILE: where the table is also written
#include "desktop/SessionProcesses.h"
#include "session/applications/Matrix.h"

#include <exception>
#include <fstream>
#include <iostream>
#include <span>
#include <string>

int main(int argc, char** argv)
{
    const std::span arguments(argv, static_cast<std::size_t>(argc));
    if (arguments.size() != 2 && arguments.size() != 4) {
        std::cerr << "usage: applications FILE [PART PARTS]\n";
        return 2;
    }
    try {
        const bool inParts = arguments.size() == 4;
        const std::size_t part = inParts ? std::stoul(arguments[2]) : 1;
        const std::size_t parts = inParts ? std::stoul(arguments[3]) : 1;
        desktop::adoptOrphans();
        applications::Matrix matrix;
        matrix.run(part, parts);
        matrix.print(std::cout);
        std::ofstream file(arguments[1]);
        matrix.print(file);
        return matrix.passed() ? 0 : 1;
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << "\n";
        return 1;
    }
}
