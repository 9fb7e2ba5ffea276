// A working relation with the Secret Service: follows the bus and the service when they go and come
// back. Belongs to the one worker thread that calls it, which must call `leave` before it ends;
// only `cancel` may come from elsewhere. The library insists on the process's shared connection to
// the session bus, which would end the process together with the bus: that is switched off here.
#pragma once

#include "linux/secretservice/Glib.h"

#include <string>

#include <libsecret/secret.h>

namespace secretservice {

class SecretServiceSession
{
public:
    enum class Collection
    {
        Absent,
        Locked,
        Unlocked,
        Unknown
    };

    SecretServiceSession();
    ~SecretServiceSession();
    SecretServiceSession(const SecretServiceSession&) = delete;
    SecretServiceSession& operator=(const SecretServiceSession&) = delete;
    SecretServiceSession(SecretServiceSession&&) = delete;
    SecretServiceSession& operator=(SecretServiceSession&&) = delete;

    /// Whether a Secret Service is on the bus, or came when it was called there by name.
    bool isPresent();

    /// The service that is on the bus now, or nullptr with the reason in `reason`. Borrowed, until
    /// the next call.
    SecretService* open(std::string& reason);

    /// The bus's own name for the service of the last `open`.
    [[nodiscard]] const std::string& owner() const { return serviceOwner; }

    /// State of the collection that new items go to. `open` must have given a service.
    Collection defaultCollection(std::string& reason);

    [[nodiscard]] GCancellable* cancellable() const { return cancellation.get(); }

    /// Makes the call in progress and every later one fail at once. Any thread.
    void cancel() noexcept;

    /// Lets go of all that belongs to the calling thread.
    void leave();

private:
    bool connect(std::string& reason);
    std::string currentOwner();
    VariantPtr callBus(const char* method, GVariant* arguments, Error& error);
    void enterThread();

    ObjectPtr<GCancellable> cancellation;
    GMainContext* context = nullptr;
    ObjectPtr<GDBusConnection> bus;
    ObjectPtr<SecretService> service;
    std::string serviceOwner;
};

} // namespace secretservice
