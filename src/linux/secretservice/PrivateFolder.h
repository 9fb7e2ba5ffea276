// A folder that only its user may enter (0700), with files that only the user may read (0600), each
// of which is either as it was or as it shall be, whatever happens on the way. The folder is made
// at the first write. Blocks on the disk; any one thread at a time.
#pragma once

#include "linux/secretservice/ItemStore.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace secretservice {

class PrivateFolder
{
public:
    struct Content
    {
        enum class State
        {
            Read,
            Missing,
            Failed
        };

        State state = State::Failed;
        SecretBytes bytes;
        std::string reason; // of `Failed`
    };

    explicit PrivateFolder(std::filesystem::path folder);

    [[nodiscard]] const std::filesystem::path& path() const { return folder; }

    [[nodiscard]] Content read(const std::string& name) const;

    /// Names of all files; none when there is no folder, nothing when it cannot be looked into.
    [[nodiscard]] std::optional<std::vector<std::string>> names() const;

    /// Replaces the file as a whole, durably.
    Failure replace(const std::string& name, std::span<const std::uint8_t> bytes);

    /// Like `replace`, but leaves a file that is there alone, and is done then.
    Failure create(const std::string& name, std::span<const std::uint8_t> bytes);

    /// Done, too, when there is no such file.
    Failure remove(const std::string& name);

    /// Keeps the file beside, under a name of its own that ends in ".damaged".
    Failure setAside(const std::string& name);

private:
    Failure make();
    Failure synchronize();

    std::filesystem::path folder;
};

} // namespace secretservice
