#include "desktop/KeyringItems.h"

#include "desktop/Failure.h"

namespace desktop {

namespace {

constexpr auto SERVICE = "org.freedesktop.secrets";
constexpr auto SERVICE_PATH = "/org/freedesktop/secrets";
constexpr auto SERVICE_INTERFACE = "org.freedesktop.Secret.Service";
constexpr auto COLLECTION_INTERFACE = "org.freedesktop.Secret.Collection";
constexpr auto ITEM_INTERFACE = "org.freedesktop.Secret.Item";
constexpr auto SCHEMA = "com.quorvent.Tarvel.GenericPassword";

void check(int result)
{
    if (result < 0) {
        throw Failure("keyring: a message has another form than it should");
    }
}

std::string readPath(const BusMessage& answer)
{
    const char* path = nullptr;
    check(sd_bus_message_read(answer.get(), "o", &path));
    return path;
}

std::string openSession(const BusConnection& bus)
{
    const auto call = newCall(bus, SERVICE, SERVICE_PATH, SERVICE_INTERFACE, "OpenSession");
    check(sd_bus_message_append(call.get(), "sv", "plain", "s", ""));
    const auto answer = callAndWait(bus, call);
    check(sd_bus_message_skip(answer.get(), "v"));
    return readPath(answer);
}

std::string defaultCollection(const BusConnection& bus)
{
    const auto call = newCall(bus, SERVICE, SERVICE_PATH, SERVICE_INTERFACE, "ReadAlias");
    check(sd_bus_message_append(call.get(), "s", "default"));
    return readPath(callAndWait(bus, call));
}

void appendAttributes(const BusMessage& call, const std::string& account)
{
    check(sd_bus_message_append(
        call.get(), "a{ss}", 2, "account", account.c_str(), "xdg:schema", SCHEMA
    ));
}

void appendProperties(const BusMessage& call, const std::string& account)
{
    sd_bus_message* message = call.get();
    check(sd_bus_message_open_container(message, 'a', "{sv}"));
    check(sd_bus_message_append(
        message, "{sv}", "org.freedesktop.Secret.Item.Label", "s", account.c_str()
    ));
    check(sd_bus_message_open_container(message, 'e', "sv"));
    check(sd_bus_message_append(message, "s", "org.freedesktop.Secret.Item.Attributes"));
    check(sd_bus_message_open_container(message, 'v', "a{ss}"));
    appendAttributes(call, account);
    check(sd_bus_message_close_container(message));
    check(sd_bus_message_close_container(message));
    check(sd_bus_message_close_container(message));
}

void appendSecret(const BusMessage& call, const std::string& session, const std::string& secret)
{
    sd_bus_message* message = call.get();
    check(sd_bus_message_open_container(message, 'r', "oayays"));
    check(sd_bus_message_append(message, "o", session.c_str()));
    check(sd_bus_message_append_array(message, 'y', nullptr, 0));
    check(sd_bus_message_append_array(message, 'y', secret.data(), secret.size()));
    check(sd_bus_message_append(message, "s", "text/plain"));
    check(sd_bus_message_close_container(message));
}

std::optional<std::string> findItem(const BusConnection& bus, const std::string& account)
{
    const auto call = newCall(bus, SERVICE, SERVICE_PATH, SERVICE_INTERFACE, "SearchItems");
    appendAttributes(call, account);
    const auto answer = callAndWait(bus, call);
    const char* path = nullptr;
    check(sd_bus_message_enter_container(answer.get(), 'a', "o"));
    const int found = sd_bus_message_read(answer.get(), "o", &path);
    check(found);
    return found > 0 ? std::optional<std::string>(path) : std::nullopt;
}

std::string readSecret(const BusMessage& answer)
{
    const void* bytes = nullptr;
    std::size_t size = 0;
    check(sd_bus_message_enter_container(answer.get(), 'r', "oayays"));
    check(sd_bus_message_skip(answer.get(), "oay"));
    check(sd_bus_message_read_array(answer.get(), 'y', &bytes, &size));
    return {static_cast<const char*>(bytes), size};
}

} // namespace

void KeyringItems::store(const std::string& account, const std::string& secret) const
{
    const std::string session = openSession(bus);
    const auto call =
        newCall(bus, SERVICE, defaultCollection(bus), COLLECTION_INTERFACE, "CreateItem");
    appendProperties(call, account);
    appendSecret(call, session, secret);
    check(sd_bus_message_append(call.get(), "b", 1));
    const auto answer = callAndWait(bus, call);
    if (readPath(answer) == "/") {
        throw Failure("keyring: it asks before it stores " + account);
    }
}

std::optional<std::string> KeyringItems::lookUp(const std::string& account) const
{
    const std::string session = openSession(bus);
    const auto item = findItem(bus, account);
    if (!item.has_value()) {
        return std::nullopt;
    }
    const auto call = newCall(bus, SERVICE, *item, ITEM_INTERFACE, "GetSecret");
    check(sd_bus_message_append(call.get(), "o", session.c_str()));
    return readSecret(callAndWait(bus, call));
}

} // namespace desktop
