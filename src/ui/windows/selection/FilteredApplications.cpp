#include "ui/windows/selection/FilteredApplications.h"

#include "platform/Text.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>

namespace ui {

using applications::ApplicationEntityPtr;

ApplicationEntities filteredApplications(const ApplicationEntities& all, const std::string& text)
{
    const std::string wanted = platform::text::lowercase(text);
    if (wanted.empty()) {
        return all;
    }
    ApplicationEntities left;
    std::copy_if(
        all.begin(),
        all.end(),
        std::back_inserter(left),
        [&wanted](const ApplicationEntityPtr& entity) {
            return platform::text::lowercase(entity->name).find(wanted) != std::string::npos;
        }
    );
    return left;
}

std::optional<int>
rowOf(const ApplicationEntities& rows, const std::string& bundleIdentifier, int row)
{
    std::optional<int> nearest;
    for (int candidate = 0; candidate < static_cast<int>(rows.size()); ++candidate) {
        const ApplicationEntityPtr& application = rows[static_cast<std::size_t>(candidate)];
        const bool isIt = application->bundleIdentifier == bundleIdentifier;
        if (isIt && (!nearest || std::abs(candidate - row) < std::abs(*nearest - row))) {
            nearest = candidate;
        }
    }
    return nearest;
}

} // namespace ui
