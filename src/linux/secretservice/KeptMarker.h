// Remembers, in a file, that this user's items are kept in the Secret Service, so that a start at
// which the service is missing is not taken for a start without items; and whether it held any when
// last seen, so that neither is one with an empty service. Any thread.
#pragma once

#include "linux/secretservice/ItemStore.h"
#include "linux/secretservice/PrivateFolder.h"

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

    /// The service held items when that was last noted. False while the mark is set and none was
    /// stored yet.
    [[nodiscard]] bool holdsItems() const;

    /// What the service holds now. As durable as `set`, which it comprises.
    Failure note(bool holdsItems);

private:
    [[nodiscard]] PrivateFolder::Content content() const;

    std::filesystem::path file;
};

} // namespace secretservice
