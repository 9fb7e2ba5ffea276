// The file beside the settings in which it is kept what the chosen applications are known by. Any
// thread may call, one at a time. What fails is reported, and changes nothing.
#pragma once

#include "linux/xdg/ChosenApplication.h"
#include "platform/Report.h"

#include <string>

namespace xdg {

class ChosenFile
{
public:
    ChosenFile(std::string path, platform::Report report);

    /// Empty where there is no file yet.
    [[nodiscard]] ChosenApplications read();

    /// Writes only what differs from what the file says.
    void write(const ChosenApplications& applications);

private:
    std::string path;
    platform::Report report;
    std::string written;
};

} // namespace xdg
