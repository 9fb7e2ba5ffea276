#include "linux/secretservice/KeychainGate.h"

#include "platform/Call.h"

#include <utility>

namespace secretservice {

KeychainGate::KeychainGate(
    platform::DispatchQueues& queues,
    KeychainPlaces places,
    platform::Report report,
    std::chrono::milliseconds patience
)
    : queues(queues),
      opening(std::move(places), std::move(report), patience)
{
}

KeychainGate::~KeychainGate()
{
    if (worker.joinable()) {
        opening.cancel();
        worker.join();
    }
}

void KeychainGate::open(OnReady ready, OnRefused refused)
{
    onReady = std::move(ready);
    onRefused = std::move(refused);
    worker = std::thread([this] { run(); });
}

void KeychainGate::run()
{
    result = opening.open();
    queues.asyncMain(lifetime.guard([this] { deliver(); }));
}

void KeychainGate::deliver()
{
    worker.join(); // this was the last it had to do
    // Nothing is touched after the call: it may end the gate.
    if (result.items) {
        platform::call(onReady, std::move(result.items));
    } else {
        const std::string reason = result.refusal;
        platform::call(onRefused, reason);
    }
}

} // namespace secretservice
