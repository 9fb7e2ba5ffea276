// Startup notification: pieces in any order from several windows.
#include "fuzz/Fuzz.h"
#include "linux/x11/StartupMessages.h"

#include <algorithm>

void fuzz(std::string_view bytes)
{
    constexpr std::size_t PIECE = 20;
    x11::StartupMessages messages;
    static_cast<void>(x11::launchedEntry(bytes));
    while (!bytes.empty()) {
        const auto control = static_cast<unsigned char>(bytes.front());
        bytes.remove_prefix(1);
        const auto message =
            messages.add(control >> 4U, (control & 1U) != 0, bytes.substr(0, PIECE));
        if (message) {
            const auto entry = x11::launchedEntry(*message);
            require(!entry || !entry->empty());
        }
        bytes.remove_prefix(std::min(PIECE, bytes.size()));
    }
}
