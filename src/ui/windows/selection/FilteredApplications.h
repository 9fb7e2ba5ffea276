// What of a list of applications a filter leaves, and where one of them stands in it. Pure.
#pragma once

#include "applications/ApplicationEntity.h"

#include <optional>
#include <string>
#include <vector>

namespace ui {

using ApplicationEntities = std::vector<applications::ApplicationEntityPtr>;

/// Those whose name contains the text in any case, in their order; all where it is empty.
ApplicationEntities filteredApplications(const ApplicationEntities& all, const std::string& text);

/// A row with that application, the nearest to `row` where there are several.
std::optional<int>
rowOf(const ApplicationEntities& rows, const std::string& bundleIdentifier, int row);

} // namespace ui
