// A working relation with the Secret Service, which follows the bus and the service when they go
// and come back; the end of the bus does not end the process. Belongs to the one worker thread that
// calls it, which must call `leave` before it ends; only `cancel` may come from elsewhere.
#pragma once

#include "linux/secretservice/AsyncCall.h"
#include "linux/secretservice/Glib.h"

#include <functional>
#include <optional>
#include <string>

#include <libsecret/secret.h>

namespace secretservice {

class SecretServiceSession
{
public:
    SecretServiceSession();
    ~SecretServiceSession();
    SecretServiceSession(const SecretServiceSession&) = delete;
    SecretServiceSession& operator=(const SecretServiceSession&) = delete;
    SecretServiceSession(SecretServiceSession&&) = delete;
    SecretServiceSession& operator=(SecretServiceSession&&) = delete;

    /// The bus takes longer than one that works would. It is waited for all the same.
    std::function<void()> onBusSilent;

    enum class Presence
    {
        Present, // it came, at the latest when it was called by name
        Absent,  // or there is no bus
        Unknown, // the bus does not say
    };

    /// Of a Secret Service on the bus.
    Presence presence();

    /// The service that is on the bus now, or nullptr with the reason in `reason`. Borrowed, until
    /// the next call.
    SecretService* open(std::string& reason);

    /// The service of the last `open`.
    [[nodiscard]] SecretService* service() const { return opened.get(); }

    /// Waits for the answer of the service, however long its prompt is up. Nothing, with the
    /// reason, when the service goes away or the session is cancelled meanwhile.
    GAsyncResult* wait(const AsyncCall& call, std::string& reason);

    [[nodiscard]] GCancellable* cancellable() const { return cancellation.get(); }

    /// Makes the call in progress and every later one fail at once. Any thread.
    void cancel() noexcept;

    /// Lets go of all that belongs to the calling thread.
    void leave();

private:
    static void vanished(GDBusConnection* bus, const gchar* name, gpointer self);
    static gboolean interrupted(GCancellable* cancellable, gpointer flag);
    static gboolean silent(gpointer self);

    bool connect(std::string& reason);
    bool connectToBus(std::string& reason);
    void disconnect();
    void watchService();
    void stopWatching();
    std::optional<std::string> currentOwner();
    VariantPtr callBus(const char* method, GVariant* arguments, int timeout, Error& error);
    void enterThread();
    void dispatchAll();

    ObjectPtr<GCancellable> cancellation;
    GMainContext* context = nullptr;
    ObjectPtr<GDBusConnection> bus;
    ObjectPtr<SecretService> opened;
    std::string openedOwner; // the bus's own name for the opened service
    guint watch = 0;
    bool isGone = false; // the opened service is
};

} // namespace secretservice
