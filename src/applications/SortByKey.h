// Lists of applications for the user's eye.
#pragma once

#include "applications/ApplicationEntity.h"
#include "platform/Text.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace applications {

using SortKey = std::function<std::string(const ApplicationEntity&)>;

/// Negative, zero or positive as the first sorts before, with or after the second.
using KeyComparison = int (*)(std::string_view, std::string_view);

/// By code points: the same list whatever the order it was kept in.
int compareCodePoints(std::string_view left, std::string_view right);

/// The same records, ascending by their keys; equal keys keep their order.
/// `platform::text::compare` is not transitive for every set of names, so this is a sort that is
/// well defined for any comparison, where the standard library's is not.
std::vector<ApplicationEntityPtr> sortedByKey(
    const std::vector<ApplicationEntityPtr>& entities,
    const SortKey& key,
    KeyComparison compare = platform::text::compare
);

} // namespace applications
