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

} // namespace

bool GraphicalSession::isForeign(
    const proc::ProcessEnvironment& environment, const std::vector<std::string>& arguments
) const
{
    const std::string own = plainDisplay(display);
    if (own.empty() || environment.display.empty() || plainDisplay(environment.display) == own ||
        (!waylandDisplay.empty() && environment.waylandDisplay == waylandDisplay)) {
        return false;
    }
    return std::none_of(arguments.begin(), arguments.end(), [&](const std::string& argument) {
        return names(argument, own);
    });
}

} // namespace workspace
