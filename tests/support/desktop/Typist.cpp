#include "desktop/Typist.h"

#include "desktop/Input.h"
#include "desktop/Wait.h"
#include "desktop/XConnection.h"

#include <chrono>

namespace desktop {

Typist::Typist(const std::string& displayName, char character)
    : thread([this, displayName, character] { work(displayName, character); })
{
}

Typist::~Typist()
{
    stop();
}

bool Typist::waitForMore(std::size_t keys) const
{
    const std::size_t wanted = typed + keys;
    return waitUntil([this, wanted] { return typed >= wanted; }, std::chrono::seconds(20));
}

void Typist::stop()
{
    stopped = true;
    if (thread.joinable()) {
        thread.join();
    }
}

void Typist::work(const std::string& displayName, char character)
{
    XConnection connection(displayName);
    Input hands(connection);
    while (!stopped) {
        hands.type({&character, 1});
        ++typed;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
}

} // namespace desktop
