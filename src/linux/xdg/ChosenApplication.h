// What an application that was chosen for protection is known by, kept apart from its entry:
// whatever becomes of the entry, the application stays recognisable.
#pragma once

#include "linux/xdg/IdentityTable.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace xdg {

struct ChosenApplication
{
    std::string id;
    std::string path; // of the entry, when it was last seen
    std::string name;
    std::string icon;
    std::string executable;
    std::string startupWindowClass;
    std::vector<std::string> roles;
    std::vector<ExecutionKey> keys;

    friend bool operator==(const ChosenApplication&, const ChosenApplication&) = default;
};

/// By id.
using ChosenApplications = std::map<std::string, ChosenApplication>;

/// Takes over what the later one knows more or better. Keys are only ever
/// added, as long as there are not too many.
void merge(ChosenApplication& known, const ChosenApplication& later);

/// The text of the file in which they are kept.
std::string textOf(const ChosenApplications& applications);

/// Takes any text: what is damaged in it is left out.
ChosenApplications parseChosenApplications(std::string_view text);

} // namespace xdg
