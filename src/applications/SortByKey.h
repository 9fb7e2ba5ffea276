// Lists of applications for the user's eye.
#pragma once

#include "applications/ApplicationEntity.h"

#include <functional>
#include <string>
#include <vector>

namespace applications {

using SortKey = std::function<std::string(const ApplicationEntity&)>;

/// The same records, ascending by `platform::text::compare` of their keys; equal keys keep their
/// order. That comparison is not transitive for every set of names, so this is a sort that is well
/// defined for any comparison, where the standard library's is not.
std::vector<ApplicationEntityPtr>
sortedByKey(const std::vector<ApplicationEntityPtr>& entities, const SortKey& key);

} // namespace applications
