// Opens the user's keychain at the start, without holding up the main thread: however long the
// keyring's prompt stays up, the program waits behind it, since a keyring that is locked is not an
// empty one. Main thread only; both callbacks come there. Nothing is called after its end.
#pragma once

#include "linux/secretservice/KeychainOpening.h"
#include "platform/DispatchQueues.h"
#include "platform/KeychainItems.h"
#include "platform/Lifetime.h"
#include "platform/Report.h"

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <thread>

namespace secretservice {

class KeychainGate
{
public:
    using OnReady = std::function<void(std::unique_ptr<platform::KeychainItems> items)>;
    using OnRefused = std::function<void(const std::string& reason)>;

    /// `queues` must outlive the gate. `patience`: how long a service that must be there may take.
    KeychainGate(
        platform::DispatchQueues& queues,
        KeychainPlaces places,
        platform::Report report,
        std::chrono::milliseconds patience = std::chrono::seconds(30)
    );
    ~KeychainGate();
    KeychainGate(const KeychainGate&) = delete;
    KeychainGate& operator=(const KeychainGate&) = delete;
    KeychainGate(KeychainGate&&) = delete;
    KeychainGate& operator=(KeychainGate&&) = delete;

    /// Calls one of the two, once. To be called once.
    void open(OnReady ready, OnRefused refused);

private:
    void run(); // worker thread
    void deliver();

    platform::DispatchQueues& queues;
    KeychainOpening opening;
    KeychainOpening::Result result; // the worker's until it posts the delivery
    OnReady onReady;
    OnRefused onRefused;
    platform::Lifetime lifetime;
    std::thread worker;
};

} // namespace secretservice
