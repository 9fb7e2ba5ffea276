#include "linux/secretservice/SecretServiceSession.h"

#include "platform/Call.h"

#include <memory>

namespace secretservice {

namespace {

constexpr auto BUS_NAME = "org.freedesktop.DBus";
constexpr auto BUS_PATH = "/org/freedesktop/DBus";
constexpr auto SERVICE_NAME = "org.freedesktop.secrets";
/// As long as the library itself waits: a service may have to be started first.
constexpr int START_TIMEOUT_MS = 25'000;
/// For what the bus knows by itself.
constexpr int QUESTION_TIMEOUT_MS = 5'000;
constexpr guint SILENCE_MS = 2'000;

struct EndSource
{
    void operator()(GSource* source) const
    {
        g_source_destroy(source);
        g_source_unref(source);
    }
};

} // namespace

SecretServiceSession::SecretServiceSession() : cancellation(g_cancellable_new()) {}

SecretServiceSession::~SecretServiceSession() = default;

void SecretServiceSession::enterThread()
{
    if (context == nullptr) {
        // Signals for the library's objects would otherwise go to the main thread's loop.
        context = g_main_context_new();
        g_main_context_push_thread_default(context);
    }
    dispatchAll();
}

void SecretServiceSession::dispatchAll()
{
    while (g_main_context_iteration(context, FALSE) == TRUE) {
    }
}

void SecretServiceSession::leave()
{
    disconnect();
    if (context != nullptr) {
        g_main_context_pop_thread_default(context);
        g_main_context_unref(context);
        context = nullptr;
    }
}

void SecretServiceSession::disconnect()
{
    stopWatching();
    opened.reset();
    if (context != nullptr) {
        // What was on its way holds the connection until it is handled.
        dispatchAll();
    }
    bus.reset();
}

void SecretServiceSession::cancel() noexcept
{
    g_cancellable_cancel(cancellation.get());
}

bool SecretServiceSession::connect(std::string& reason)
{
    enterThread();
    if (bus && g_dbus_connection_is_closed(bus.get()) == TRUE) {
        disconnect();
    }
    if (!bus && !connectToBus(reason)) {
        return false;
    }
    if (g_dbus_connection_is_closed(bus.get()) == TRUE) {
        disconnect();
        reason = "cannot be reached: the session bus is gone";
        return false;
    }
    return true;
}

/// A bus may take the connection and never answer; the wait ends with the session at the latest.
bool SecretServiceSession::connectToBus(std::string& reason)
{
    const AsyncCall call;
    const std::unique_ptr<GSource, EndSource> alarm(g_timeout_source_new(SILENCE_MS));
    g_source_set_callback(alarm.get(), silent, this, nullptr);
    g_source_attach(alarm.get(), context);
    g_bus_get(G_BUS_TYPE_SESSION, cancellable(), AsyncCall::finished, call.data());
    while (call.result() == nullptr) {
        g_main_context_iteration(context, TRUE);
    }
    Error error;
    bus.reset(g_bus_get_finish(call.result(), error.out()));
    if (!bus) {
        reason = error.message();
        return false;
    }
    // The library insists on the connection that the process shares, which would end the process
    // together with the bus.
    g_dbus_connection_set_exit_on_close(bus.get(), FALSE);
    return true;
}

gboolean SecretServiceSession::silent(gpointer self)
{
    platform::call(static_cast<SecretServiceSession*>(self)->onBusSilent);
    return G_SOURCE_REMOVE;
}

VariantPtr
SecretServiceSession::callBus(const char* method, GVariant* arguments, int timeout, Error& error)
{
    return VariantPtr(g_dbus_connection_call_sync(
        bus.get(),
        BUS_NAME,
        BUS_PATH,
        BUS_NAME,
        method,
        arguments,
        nullptr,
        G_DBUS_CALL_FLAGS_NONE,
        timeout,
        cancellable(),
        error.out()
    ));
}

/// Empty when nobody has the name; nothing when the bus does not answer.
std::optional<std::string> SecretServiceSession::currentOwner()
{
    Error error;
    const VariantPtr reply =
        callBus("GetNameOwner", g_variant_new("(s)", SERVICE_NAME), QUESTION_TIMEOUT_MS, error);
    if (error.isTimeout()) {
        return std::nullopt;
    }
    const gchar* name = nullptr;
    if (reply) {
        g_variant_get(reply.get(), "(&s)", &name);
    }
    return name == nullptr ? std::string() : std::string(name);
}

SecretServiceSession::Presence SecretServiceSession::presence()
{
    std::string reason;
    if (!connect(reason)) {
        return Presence::Absent;
    }
    std::optional<std::string> owner = currentOwner();
    if (owner.has_value() && owner->empty()) {
        Error error;
        callBus(
            "StartServiceByName", g_variant_new("(su)", SERVICE_NAME, 0U), START_TIMEOUT_MS, error
        );
        owner = error.isSet() && !error.isTimeout() ? std::string() : currentOwner();
    }
    if (!owner.has_value()) {
        return Presence::Unknown;
    }
    return owner->empty() ? Presence::Absent : Presence::Present;
}

SecretService* SecretServiceSession::open(std::string& reason)
{
    if (!connect(reason)) {
        return nullptr;
    }
    if (opened && !isGone && currentOwner() == openedOwner) {
        return opened.get();
    }
    stopWatching();
    opened.reset();
    isGone = false;
    const AsyncCall call;
    secret_service_open(
        SECRET_TYPE_SERVICE,
        nullptr,
        SECRET_SERVICE_OPEN_SESSION,
        cancellable(),
        AsyncCall::finished,
        call.data()
    );
    GAsyncResult* result = wait(call, reason);
    if (result == nullptr) {
        return nullptr;
    }
    Error error;
    opened.reset(secret_service_open_finish(result, error.out()));
    openedOwner = currentOwner().value_or("");
    if (!opened || openedOwner.empty()) {
        reason = error.message();
        opened.reset();
        return nullptr;
    }
    watchService();
    return opened.get();
}

void SecretServiceSession::watchService()
{
    watch = g_bus_watch_name_on_connection(
        bus.get(), SERVICE_NAME, G_BUS_NAME_WATCHER_FLAGS_NONE, nullptr, vanished, this, nullptr
    );
}

void SecretServiceSession::stopWatching()
{
    if (watch != 0) {
        g_bus_unwatch_name(watch);
        watch = 0;
    }
}

void SecretServiceSession::vanished(GDBusConnection* /*bus*/, const gchar* /*name*/, gpointer self)
{
    static_cast<SecretServiceSession*>(self)->isGone = true;
}

gboolean SecretServiceSession::interrupted(GCancellable* /*cancellable*/, gpointer flag)
{
    *static_cast<bool*>(flag) = true;
    return G_SOURCE_REMOVE;
}

GAsyncResult* SecretServiceSession::wait(const AsyncCall& call, std::string& reason)
{
    bool isInterrupted = false;
    const std::unique_ptr<GSource, EndSource> interruption(g_cancellable_source_new(cancellable()));
    g_source_set_callback(interruption.get(), G_SOURCE_FUNC(interrupted), &isInterrupted, nullptr);
    g_source_attach(interruption.get(), context);
    while (call.result() == nullptr && !isGone && !isInterrupted) {
        g_main_context_iteration(context, TRUE);
    }
    if (isGone || isInterrupted) {
        // A service that went away has given no answer, whatever the library makes of it.
        reason = "went away while it was asked";
        return nullptr;
    }
    return call.result();
}

} // namespace secretservice
