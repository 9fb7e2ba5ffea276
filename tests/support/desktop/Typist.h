// Somebody who types one character over and over, from the moment the object is made until it goes,
// on a thread and a connection of its own.
#pragma once

#include <atomic>
#include <cstddef>
#include <string>
#include <thread>

namespace desktop {

class Typist
{
public:
    Typist(const std::string& displayName, char character);
    ~Typist();
    Typist(const Typist&) = delete;
    Typist& operator=(const Typist&) = delete;
    Typist(Typist&&) = delete;
    Typist& operator=(Typist&&) = delete;

    /// How often the character has been typed so far.
    [[nodiscard]] std::size_t count() const { return typed; }

    /// False when so many more have not been typed within reasonable time.
    [[nodiscard]] bool waitForMore(std::size_t keys) const;

    /// Returns when the last key is up again.
    void stop();

private:
    void work(const std::string& displayName, char character);

    std::atomic<bool> stopped = false;
    std::atomic<std::size_t> typed = 0;
    std::thread thread;
};

} // namespace desktop
