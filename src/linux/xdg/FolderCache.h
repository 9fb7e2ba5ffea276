// Files of one kind below folders, as they were parsed: a folder is listed again only when it was
// forgotten, a file in it parsed again only when it is another one than before. What is deleted is
// not kept. One thread at a time.
#pragma once

#include "linux/xdg/FileText.h"
#include "platform/Call.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace xdg {

template <typename Value> class FolderCache
{
public:
    using Parse = std::function<std::optional<Value>(const std::string& text)>;

    struct Item
    {
        std::string id; // name relative to the root, '-' for '/', without the suffix
        std::string path;
        Value value;
    };

    FolderCache(std::string suffix, Parse parse)
        : suffix(std::move(suffix)),
          parse(std::move(parse))
    {
    }

    /// Told of each folder before it is listed, also of one that is missing.
    std::function<void(const std::string& folder)> beforeListing;

    /// What is found below the root, in the order of the names; each folder counts once though
    /// links may lead to it again.
    std::vector<Item> below(const std::string& root)
    {
        std::vector<Item> found;
        visited.clear();
        walk({root, "", 0}, found);
        return found;
    }

    /// These will be listed again.
    void forget(const std::set<std::string>& changed)
    {
        for (const std::string& folder : changed) {
            folders.erase(folder);
        }
    }

    void forgetAll() { folders.clear(); }

    [[nodiscard]] bool knows(const std::string& folder) const { return folders.contains(folder); }

    /// Only files right in the root, not below.
    void stayFlat() { deepest = 0; }

private:
    static constexpr int DEEPEST_FOLDER = 8;

    struct Place
    {
        std::string folder;
        std::string prefix;
        int depth = 0;
    };

    struct File
    {
        FileStamp stamp;
        std::optional<Value> value;
    };

    struct Folder
    {
        std::vector<std::string> files;
        std::vector<std::string> folders;
    };

    void walk(const Place& place, std::vector<Item>& found)
    {
        const std::optional<FolderIdentity> identity = identityOf(place.folder);
        if (place.depth > deepest || (identity && !visited.insert(*identity).second)) {
            return;
        }
        auto known = folders.find(place.folder);
        if (known == folders.end()) {
            known = folders.emplace(place.folder, list(place.folder)).first;
        }
        const Folder& folder = known->second;
        for (const std::string& name : folder.files) {
            std::string path = place.folder + "/" + name;
            const auto file = files.find(path);
            if (file != files.end() && file->second.value) {
                const std::string id = name.substr(0, name.size() - suffix.size());
                found.push_back({place.prefix + id, std::move(path), *file->second.value});
            }
        }
        for (const std::string& name : folder.folders) {
            walk({place.folder + "/" + name, place.prefix + name + "-", place.depth + 1}, found);
        }
    }

    Folder list(const std::string& path)
    {
        platform::call(beforeListing, path);
        FolderNames names = folderNames(path);
        std::erase_if(names.files, [&](const std::string& name) {
            return !name.ends_with(suffix);
        });
        forgetMissing(path, names);
        for (const std::string& name : names.files) {
            read(std::string(path).append("/").append(name));
        }
        return {std::move(names.files), std::move(names.folders)};
    }

    /// What is kept of files, and of whole folders, that are in the folder no more.
    void forgetMissing(const std::string& path, const FolderNames& names)
    {
        const std::string prefix = path + "/";
        const auto isMissing = [&](const auto& kept) {
            const std::string_view rest = std::string_view(kept.first).substr(prefix.size());
            const std::string name(rest.substr(0, rest.find('/')));
            const bool isRight = name.size() == rest.size();
            return !(isRight && std::binary_search(names.files.begin(), names.files.end(), name)) &&
                   !std::binary_search(names.folders.begin(), names.folders.end(), name);
        };
        eraseBelow(files, prefix, isMissing);
        eraseBelow(folders, prefix, isMissing);
    }

    template <typename Kept, typename Predicate>
    static void eraseBelow(Kept& kept, const std::string& prefix, const Predicate& isMissing)
    {
        auto entry = kept.lower_bound(prefix);
        while (entry != kept.end() && entry->first.starts_with(prefix)) {
            entry = isMissing(*entry) ? kept.erase(entry) : std::next(entry);
        }
    }

    void read(const std::string& path)
    {
        const std::optional<FileStamp> stamp = stampOf(path);
        const auto known = files.find(path);
        if (!stamp) {
            files.erase(path);
        } else if (known == files.end() || known->second.stamp != *stamp) {
            const std::optional<std::string> text = readText(path);
            files[path] = {*stamp, text ? parse(*text) : std::nullopt};
        }
    }

    std::string suffix;
    Parse parse;
    std::map<std::string, Folder> folders;
    std::map<std::string, File> files;
    std::set<FolderIdentity> visited; // during one walk
    int deepest = DEEPEST_FOLDER;
};

} // namespace xdg
