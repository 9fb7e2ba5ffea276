// The file system as users see it: "/Applications" is the user's application catalogue, one entry
// "<identifier>.app" for each application that is meant to be shown; any other folder is the real
// one. Any thread may call.
#pragma once

#include "platform/Port.h"

#include <optional>
#include <string>
#include <vector>

namespace platform {

class FileManager : public Port
{
public:
    /// Names of the entries of the folder, hidden ones included, in the platform's order; nothing
    /// when it is not a folder that can be read.
    virtual std::optional<std::vector<std::string>> contentsOfDirectory(const std::string& path
    ) = 0;
};

} // namespace platform
