// Reads the text of a desktop entry. Pure, and takes any bytes: what is not an application's entry,
// or a damaged one, is an empty answer.
#pragma once

#include "linux/xdg/DesktopEntry.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace xdg {

/// The names under which a text for the locale ("de_DE.UTF-8@euro") may stand, best first.
std::vector<std::string> localeNames(const std::string& locale);

class DesktopEntryParser
{
public:
    explicit DesktopEntryParser(std::vector<std::string> locales) : locales(std::move(locales)) {}

    /// The entry without `id` and `path`. A deleted one needs nothing but to say so.
    [[nodiscard]] std::optional<DesktopEntry> parse(std::string_view text) const;

private:
    std::vector<std::string> locales;
};

} // namespace xdg
