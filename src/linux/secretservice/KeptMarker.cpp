#include "linux/secretservice/KeptMarker.h"

#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

namespace secretservice {

KeptMarker::KeptMarker(std::filesystem::path file) : file(std::move(file)) {}

PrivateFolder::Content KeptMarker::content() const
{
    return PrivateFolder(file.parent_path()).read(file.filename());
}

bool KeptMarker::isSet() const
{
    return content().state != PrivateFolder::Content::State::Missing;
}

bool KeptMarker::holdsItems() const
{
    const PrivateFolder::Content now = content();
    return now.state == PrivateFolder::Content::State::Read && !now.bytes.empty();
}

Failure KeptMarker::set()
{
    return isSet() ? Failure() : note(false);
}

Failure KeptMarker::note(bool holds)
{
    if (isSet() && holdsItems() == holds) {
        return std::nullopt;
    }
    constexpr std::string_view HOLDS_ITEMS = "holds items\n";
    const std::string_view text = holds ? HOLDS_ITEMS : std::string_view();
    PrivateFolder folder(file.parent_path());
    const std::vector<std::uint8_t> bytes(text.begin(), text.end());
    if (const Failure failure = folder.replace(file.filename(), bytes)) {
        return "is not used, since the folder " + folder.path().string() + " " + *failure;
    }
    return std::nullopt;
}

} // namespace secretservice
