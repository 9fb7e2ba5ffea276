#include "linux/workspace/GraphicalSession.h"

#include <algorithm>
#include <string_view>

namespace workspace {

namespace {

/// Without the number of the screen, and without a host that means this one: ":0" for "unix:0.1".
std::string plainDisplay(std::string_view name)
{
    constexpr std::string_view LOCAL = "unix:";
    if (name.starts_with(LOCAL)) {
        name.remove_prefix(LOCAL.size() - 1);
    }
    const std::size_t colon = name.rfind(':');
    const std::size_t dot = colon == std::string_view::npos ? colon : name.find('.', colon);
    return std::string(name.substr(0, dot));
}

bool names(std::string_view argument, const std::string& display)
{
    const std::size_t equals = argument.find('='); // "--display=:0"
    return plainDisplay(argument) == display ||
           (equals != std::string_view::npos && plainDisplay(argument.substr(equals + 1)) == display
           );
}

/// The value of the option that toolkits take a display from; empty where there is none.
std::string_view displayAmong(const std::vector<std::string>& arguments)
{
    for (std::size_t index = 0; index < arguments.size(); ++index) {
        std::string_view value = arguments[index];
        const std::size_t dashes = value.starts_with("--") ? 2 : 1;
        const std::size_t equals = value.find('=');
        if (!value.starts_with('-') || value.substr(dashes, equals - dashes) != "display") {
            continue;
        }
        if (equals != std::string_view::npos) {
            value.remove_prefix(equals + 1);
        } else {
            value = index + 1 < arguments.size() ? arguments[index + 1] : std::string_view();
        }
        return value.find(':') == std::string_view::npos ? std::string_view() : value;
    }
    return {};
}

} // namespace

bool GraphicalSession::isForeign(
    const proc::ProcessEnvironment& environment,
    const std::vector<std::string>& arguments,
    const Ancestors& ancestors
) const
{
    const std::string own = plainDisplay(display);
    const bool named =
        std::any_of(arguments.begin(), arguments.end(), [&](const std::string& argument) {
            return names(argument, own);
        });
    if (own.empty() || named || isThis(environment)) {
        return false;
    }
    return !environment.display.empty() || !displayAmong(arguments).empty() ||
           (ancestors && areForeign(ancestors()));
}

bool GraphicalSession::isThis(const proc::ProcessEnvironment& environment) const
{
    return plainDisplay(environment.display) == plainDisplay(display) ||
           (!waylandDisplay.empty() && environment.waylandDisplay == waylandDisplay);
}

/// All that name a display name another one.
bool GraphicalSession::areForeign(const std::vector<proc::ProcessEnvironment>& ancestors) const
{
    const bool any = std::any_of(ancestors.begin(), ancestors.end(), [](const auto& ancestor) {
        return !ancestor.display.empty();
    });
    return any && std::none_of(ancestors.begin(), ancestors.end(), [this](const auto& ancestor) {
               return isThis(ancestor);
           });
}

} // namespace workspace
