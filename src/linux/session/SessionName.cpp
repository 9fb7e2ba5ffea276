#include "linux/session/SessionName.h"

#include "linux/process/Environment.h"

#include <array>
#include <cstdint>
#include <cstdio>

namespace session {

namespace {

// Keeps whole paths, with the folder they are reached by, inside the 107 bytes of a socket address.
constexpr std::size_t LONGEST_NAME = 48;

bool isPlain(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
           c == '.';
}

std::string hexadecimal(std::uint64_t value, int digits)
{
    std::array<char, 17> buffer{};
    const int length = std::snprintf(
        buffer.data(), buffer.size(), "%0*llx", digits, static_cast<unsigned long long>(value)
    );
    return {buffer.data(), static_cast<std::size_t>(length)};
}

// FNV-1a.
std::uint64_t digest(const std::string& text)
{
    std::uint64_t value = 0xcbf29ce484222325U;
    for (const char c : text) {
        value = (value ^ static_cast<unsigned char>(c)) * 0x100000001b3U;
    }
    return value;
}

// ":0.0" and ":0" are screens of the same display.
std::string withoutScreen(const std::string& display)
{
    const std::size_t colon = display.rfind(':');
    const std::size_t dot = display.rfind('.');
    const bool namesScreen = colon != std::string::npos && dot != std::string::npos && dot > colon;
    return namesScreen ? display.substr(0, dot) : display;
}

std::string asFileName(const std::string& text)
{
    std::string name;
    for (const char c : text) {
        if (isPlain(c)) {
            name += c;
        } else {
            name += '_' + hexadecimal(static_cast<unsigned char>(c), 2);
        }
    }
    return name.size() <= LONGEST_NAME ? name : hexadecimal(digest(text), 16);
}

std::string displayName()
{
    const std::string wayland = process::environmentValue("WAYLAND_DISPLAY");
    if (!wayland.empty()) {
        return asFileName(wayland);
    }
    const std::string x11 = withoutScreen(process::environmentValue("DISPLAY"));
    return x11.empty() ? "no-display" : asFileName(x11);
}

} // namespace

std::string sessionName(const std::string& program)
{
    return asFileName(program) + "@" + displayName();
}

std::string lockName(const std::string& name)
{
    return name + ".lock";
}

std::string exitName(const std::string& name)
{
    return name + ".exit";
}

std::string socketName(const std::string& name)
{
    return name + ".socket";
}

} // namespace session
