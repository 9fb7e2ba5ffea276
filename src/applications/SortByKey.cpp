#include "applications/SortByKey.h"

#include <cstddef>
#include <cstdint>

namespace applications {

namespace {

/// Where `key` belongs in the sorted list, after those equal to it, by bisection.
std::size_t placeFor(
    const std::string& key,
    const std::vector<std::string>& keys,
    const std::vector<std::uint32_t>& sorted,
    KeyComparison compare
)
{
    std::size_t begin = 0;
    std::size_t end = sorted.size();
    while (begin < end) {
        const std::size_t middle = begin + (end - begin) / 2;
        if (compare(key, keys[sorted[middle]]) < 0) {
            end = middle;
        } else {
            begin = middle + 1;
        }
    }
    return begin;
}

} // namespace

int compareCodePoints(std::string_view left, std::string_view right)
{
    return left.compare(right); // the bytes of UTF-8 sort as the code points do
}

std::vector<ApplicationEntityPtr> sortedByKey(
    const std::vector<ApplicationEntityPtr>& entities, const SortKey& key, KeyComparison compare
)
{
    std::vector<std::string> keys;
    std::vector<std::uint32_t> sorted; // positions, which are quick to move aside
    keys.reserve(entities.size());
    sorted.reserve(entities.size());
    for (const ApplicationEntityPtr& entity : entities) {
        keys.push_back(key(*entity));
        const auto place =
            static_cast<std::ptrdiff_t>(placeFor(keys.back(), keys, sorted, compare));
        sorted.insert(sorted.begin() + place, static_cast<std::uint32_t>(keys.size() - 1));
    }
    std::vector<ApplicationEntityPtr> result;
    result.reserve(sorted.size());
    for (const std::uint32_t position : sorted) {
        result.push_back(entities[position]);
    }
    return result;
}

} // namespace applications
