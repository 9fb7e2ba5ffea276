#include "linux/secretservice/SecretServiceSession.h"

#include <algorithm>

namespace secretservice {

namespace {

constexpr auto BUS_NAME = "org.freedesktop.DBus";
constexpr auto BUS_PATH = "/org/freedesktop/DBus";
constexpr auto SERVICE_NAME = "org.freedesktop.secrets";
/// As long as the library itself waits.
constexpr int CALL_TIMEOUT_MS = 25'000;

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
    while (g_main_context_iteration(context, FALSE) == TRUE) {
    }
}

void SecretServiceSession::leave()
{
    service.reset();
    bus.reset();
    if (context != nullptr) {
        while (g_main_context_iteration(context, FALSE) == TRUE) {
        }
        g_main_context_pop_thread_default(context);
        g_main_context_unref(context);
        context = nullptr;
    }
}

void SecretServiceSession::cancel() noexcept
{
    g_cancellable_cancel(cancellation.get());
}

bool SecretServiceSession::connect(std::string& reason)
{
    enterThread();
    if (bus && g_dbus_connection_is_closed(bus.get()) == TRUE) {
        service.reset();
        bus.reset();
        // The library and GLib keep the dead connection alive until its last signals are handled.
        enterThread();
    }
    if (!bus) {
        Error error;
        bus.reset(g_bus_get_sync(G_BUS_TYPE_SESSION, cancellable(), error.out()));
        if (!bus) {
            reason = error.message();
            return false;
        }
        g_dbus_connection_set_exit_on_close(bus.get(), FALSE);
    }
    if (g_dbus_connection_is_closed(bus.get()) == TRUE) {
        bus.reset();
        reason = "cannot be reached: the session bus is gone";
        return false;
    }
    return true;
}

VariantPtr SecretServiceSession::callBus(const char* method, GVariant* arguments, Error& error)
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
        CALL_TIMEOUT_MS,
        cancellable(),
        error.out()
    ));
}

std::string SecretServiceSession::currentOwner()
{
    Error error;
    const VariantPtr reply = callBus("GetNameOwner", g_variant_new("(s)", SERVICE_NAME), error);
    const gchar* name = nullptr;
    if (reply) {
        g_variant_get(reply.get(), "(&s)", &name);
    }
    return name == nullptr ? std::string() : std::string(name);
}

bool SecretServiceSession::isPresent()
{
    std::string reason;
    if (!connect(reason)) {
        return false;
    }
    if (!currentOwner().empty()) {
        return true;
    }
    Error error;
    const VariantPtr started =
        callBus("StartServiceByName", g_variant_new("(su)", SERVICE_NAME, 0U), error);
    return started && !currentOwner().empty();
}

SecretService* SecretServiceSession::open(std::string& reason)
{
    if (!connect(reason)) {
        return nullptr;
    }
    if (service && !serviceOwner.empty() && currentOwner() == serviceOwner) {
        return service.get();
    }
    service.reset();
    Error error;
    service.reset(secret_service_open_sync(
        SECRET_TYPE_SERVICE, nullptr, SECRET_SERVICE_OPEN_SESSION, cancellable(), error.out()
    ));
    if (!service) {
        reason = error.message();
        return nullptr;
    }
    serviceOwner = currentOwner();
    return service.get();
}

SecretServiceSession::Collection SecretServiceSession::defaultCollection(std::string& reason)
{
    Error error;
    const ObjectPtr<SecretCollection> collection(secret_collection_for_alias_sync(
        service.get(), SECRET_COLLECTION_DEFAULT, SECRET_COLLECTION_NONE, cancellable(), error.out()
    ));
    if (error.isSet()) {
        reason = error.message();
        return Collection::Unknown;
    }
    if (!collection) {
        return Collection::Absent;
    }
    return secret_collection_get_locked(collection.get()) == TRUE ? Collection::Locked
                                                                  : Collection::Unlocked;
}

} // namespace secretservice
