#include "linux/secretservice/KeptMarker.h"

#include "linux/secretservice/PrivateFolder.h"

#include <utility>

namespace secretservice {

KeptMarker::KeptMarker(std::filesystem::path file) : file(std::move(file)) {}

bool KeptMarker::isSet() const
{
    const PrivateFolder folder(file.parent_path());
    return folder.read(file.filename()).state != PrivateFolder::Content::State::Missing;
}

Failure KeptMarker::set()
{
    if (isSet()) {
        return std::nullopt;
    }
    PrivateFolder folder(file.parent_path());
    if (const Failure failure = folder.create(file.filename(), {})) {
        return "is not used, since the folder " + folder.path().string() + " " + *failure;
    }
    return std::nullopt;
}

} // namespace secretservice
