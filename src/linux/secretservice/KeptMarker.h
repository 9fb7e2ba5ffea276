// Remembers, in a file, that this user's items are kept in the Secret Service, so that a start at
// which the service is missing is not taken for a start without items. Any thread.
#pragma once

#include "linux/secretservice/ItemStore.h"

#include <filesystem>

namespace secretservice {

class KeptMarker
{
public:
    /// The file's folder is made, with mode 0700, when it is missing.
    explicit KeptMarker(std::filesystem::path file);

    /// True as well when that cannot be told.
    [[nodiscard]] bool isSet() const;

    /// Done when the mark will outlast a loss of power.
    Failure set();

private:
    std::filesystem::path file;
};

} // namespace secretservice
