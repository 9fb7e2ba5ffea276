#include "applications/SortByKey.h"

#include "platform/Text.h"

#include <cstddef>
#include <utility>

namespace applications {

namespace {

struct KeyedEntity
{
    std::string key;
    ApplicationEntityPtr entity;
};

/// Where `key` belongs in the sorted list, after those equal to it, by bisection.
std::size_t placeFor(const std::string& key, const std::vector<KeyedEntity>& sorted)
{
    std::size_t begin = 0;
    std::size_t end = sorted.size();
    while (begin < end) {
        const std::size_t middle = begin + (end - begin) / 2;
        if (platform::text::compare(key, sorted[middle].key) < 0) {
            end = middle;
        } else {
            begin = middle + 1;
        }
    }
    return begin;
}

} // namespace

std::vector<ApplicationEntityPtr>
sortedByKey(const std::vector<ApplicationEntityPtr>& entities, const SortKey& key)
{
    std::vector<KeyedEntity> sorted;
    sorted.reserve(entities.size());
    for (const ApplicationEntityPtr& entity : entities) {
        std::string text = key(*entity);
        const auto place = static_cast<std::ptrdiff_t>(placeFor(text, sorted));
        sorted.insert(sorted.begin() + place, {std::move(text), entity});
    }
    std::vector<ApplicationEntityPtr> result;
    result.reserve(sorted.size());
    for (KeyedEntity& entry : sorted) {
        result.push_back(std::move(entry.entity));
    }
    return result;
}

} // namespace applications
