// Desktop entries: any text gives an entry that is whole, or none.
#include "fuzz/Fuzz.h"
#include "linux/xdg/DesktopEntryParser.h"
#include "linux/xdg/Roles.h"

void fuzz(std::string_view bytes)
{
    static const xdg::DesktopEntryParser parser(xdg::localeNames("de_DE.UTF-8@euro"));
    const auto entry = parser.parse(bytes);
    if (entry) {
        require(entry->hidden || !entry->name.empty());
        static_cast<void>(xdg::Roles::shipped().of(*entry));
    }
    static_cast<void>(xdg::Roles(bytes));
    static_cast<void>(xdg::localeNames(std::string(bytes)));
}
