// Folders that are set beforehand; listing any other path fails. One thread.
#pragma once

#include "platform/FileManager.h"

#include <map>

namespace fakes {

class FakeFileManager final : public platform::FileManager
{
public:
    std::optional<std::vector<std::string>> contentsOfDirectory(const std::string& path) override
    {
        const auto found = folders.find(path);
        return found == folders.end() ? std::nullopt : std::optional(found->second);
    }

    std::map<std::string, std::vector<std::string>> folders;
};

} // namespace fakes
