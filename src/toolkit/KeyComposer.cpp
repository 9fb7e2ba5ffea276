#include "toolkit/KeyComposer.h"

#include "toolkit/ComposeTable.h"

#include <algorithm>
#include <string>

#include <xkbcommon/xkbcommon-compose.h>

namespace toolkit {

void KeyComposer::Release::operator()(xkb_compose_state* state) const
{
    xkb_compose_state_unref(state);
}

KeyComposer::KeyComposer() = default;

KeyComposer::KeyComposer(const ComposeTable& table) : table(&table) {}

KeyComposer::~KeyComposer() = default;

std::optional<QString> KeyComposer::press(std::uint32_t keySymbol)
{
    // Shift and its like are ignored between two keys of a sequence.
    if (!prepared() || xkb_compose_state_feed(state.get(), keySymbol) == XKB_COMPOSE_FEED_IGNORED) {
        return std::nullopt;
    }
    switch (xkb_compose_state_get_status(state.get())) {
    case XKB_COMPOSE_COMPOSING:
        return QString();
    case XKB_COMPOSE_COMPOSED: {
        const QString composed = text();
        reset();
        return composed;
    }
    default: // no part of a sequence, or one that leads nowhere: only its last key counts
        reset();
        return std::nullopt;
    }
}

void KeyComposer::reset()
{
    if (state != nullptr) {
        xkb_compose_state_reset(state.get());
    }
}

bool KeyComposer::prepared()
{
    if (table == nullptr) {
        table = &ComposeTable::ofThisProcess();
    }
    if (state == nullptr && table->get() != nullptr) {
        state.reset(xkb_compose_state_new(table->get(), XKB_COMPOSE_STATE_NO_FLAGS));
    }
    return state != nullptr;
}

QString KeyComposer::text() const
{
    const int length = xkb_compose_state_get_utf8(state.get(), nullptr, 0);
    std::string bytes(static_cast<std::size_t>(std::max(length, 0)) + 1, '\0'); // and its end
    xkb_compose_state_get_utf8(state.get(), bytes.data(), bytes.size());
    return QString::fromUtf8(bytes.c_str());
}

} // namespace toolkit
