#include "FakeSecretService.h"

#include "desktop/Failure.h"

#include <memory>
#include <utility>

namespace {

constexpr auto NAME = "org.freedesktop.secrets";
constexpr auto ROOT = "/org/freedesktop/secrets";
constexpr auto SESSION = "/org/freedesktop/secrets/session/1";
constexpr auto COLLECTION = "/org/freedesktop/secrets/collection/login";
constexpr auto ITEM = "/org/freedesktop/secrets/collection/login/1";
constexpr auto PROMPT = "/org/freedesktop/secrets/prompt/1";
constexpr auto PROPERTIES = "org.freedesktop.DBus.Properties";
constexpr auto SCHEMA = "com.quorvent.Tarvel.GenericPassword";
/// How often it looks whether the test wants something of it.
constexpr std::uint64_t TURN_MICROSECONDS = 5'000;

desktop::BusMessage newReply(sd_bus_message* call)
{
    sd_bus_message* reply = nullptr;
    if (sd_bus_message_new_method_return(call, &reply) < 0) {
        throw desktop::Failure("no reply");
    }
    return desktop::BusMessage(reply);
}

int send(const desktop::BusMessage& reply)
{
    const int sent = sd_bus_send(nullptr, reply.get(), nullptr);
    return sent < 0 ? sent : 1;
}

} // namespace

FakeSecretService::FakeSecretService(
    const std::string& address, std::string account, std::string value, bool locked
)
    : bus(desktop::connectToBus(address)),
      account(std::move(account)),
      value(std::move(value)),
      locked(locked)
{
    sd_bus_add_fallback(bus.get(), nullptr, ROOT, received, this);
    if (sd_bus_request_name(bus.get(), NAME, 0) < 0) {
        throw desktop::Failure("no Secret Service");
    }
    thread = std::thread([this] { serve(); });
}

FakeSecretService::~FakeSecretService()
{
    stopping = true;
    thread.join();
}

void FakeSecretService::serve()
{
    while (!stopping) {
        while (sd_bus_process(bus.get(), nullptr) > 0) {
        }
        if (state == Prompt::Up && wanted != Prompt::NotAsked) {
            finishPrompt();
        }
        sd_bus_wait(bus.get(), TURN_MICROSECONDS);
    }
}

void FakeSecretService::finishPrompt()
{
    const bool dismissed = wanted == Prompt::Dismissed;
    locked = dismissed;
    sd_bus_message* signal = nullptr;
    sd_bus_message_new_signal(
        bus.get(), &signal, PROMPT, "org.freedesktop.Secret.Prompt", "Completed"
    );
    const desktop::BusMessage completed(signal);
    sd_bus_message_append(signal, "bv", dismissed ? 1 : 0, "ao", dismissed ? 0 : 1, COLLECTION);
    sd_bus_send(bus.get(), signal, nullptr);
    state = wanted.load();
}

int FakeSecretService::received(sd_bus_message* message, void* self, sd_bus_error* /*error*/)
{
    return static_cast<FakeSecretService*>(self)->handle(message);
}

int FakeSecretService::handle(sd_bus_message* message)
{
    const std::string path = sd_bus_message_get_path(message);
    const std::string interface = sd_bus_message_get_interface(message);
    const std::string member = sd_bus_message_get_member(message);
    if (interface == PROPERTIES && member == "GetAll") {
        return answerProperties(message, path);
    }
    if (path == PROMPT && member == "Prompt") {
        state = Prompt::Up;
        return sd_bus_reply_method_return(message, nullptr);
    }
    if (path == PROMPT && member == "Dismiss") {
        wanted = Prompt::Dismissed;
        return sd_bus_reply_method_return(message, nullptr);
    }
    return path == ROOT ? handleService(message, member) : 0;
}

int FakeSecretService::handleService(sd_bus_message* message, const std::string& member)
{
    if (member == "OpenSession") {
        const char* algorithm = nullptr;
        sd_bus_message_read(message, "s", &algorithm);
        if (std::string(algorithm) != "plain") {
            return sd_bus_reply_method_errorf(message, SD_BUS_ERROR_NOT_SUPPORTED, "only plain");
        }
        return sd_bus_reply_method_return(message, "vo", "s", "", SESSION);
    }
    if (member == "ReadAlias") {
        return sd_bus_reply_method_return(message, "o", COLLECTION);
    }
    if (member == "SearchItems") {
        return answerSearch(message);
    }
    if (member == "Unlock") {
        return answerUnlock(message);
    }
    return member == "GetSecrets" ? answerSecrets(message) : 0;
}

int FakeSecretService::answerProperties(sd_bus_message* message, const std::string& path)
{
    if (path == ROOT) {
        return sd_bus_reply_method_return(message, "a{sv}", 1, "Collections", "ao", 1, COLLECTION);
    }
    if (path == COLLECTION) {
        return sd_bus_reply_method_return(
            message, "a{sv}", 2, "Items", "ao", 1, ITEM, "Locked", "b", locked ? 1 : 0
        );
    }
    if (path == ITEM) {
        return sd_bus_reply_method_return(
            message,
            "a{sv}",
            3,
            "Locked",
            "b",
            locked ? 1 : 0,
            "Label",
            "s",
            account.c_str(),
            "Attributes",
            "a{ss}",
            2,
            "account",
            account.c_str(),
            "xdg:schema",
            SCHEMA
        );
    }
    return sd_bus_reply_method_return(message, "a{sv}", 0);
}

int FakeSecretService::answerSearch(sd_bus_message* message) const
{
    // Like keyrings that show nothing of what they hold while they are locked.
    return locked ? sd_bus_reply_method_return(message, "aoao", 0, 0)
                  : sd_bus_reply_method_return(message, "aoao", 1, ITEM, 0);
}

int FakeSecretService::answerUnlock(sd_bus_message* message) const
{
    return locked ? sd_bus_reply_method_return(message, "aoo", 0, PROMPT)
                  : sd_bus_reply_method_return(message, "aoo", 1, COLLECTION, "/");
}

int FakeSecretService::answerSecrets(sd_bus_message* message)
{
    const desktop::BusMessage reply = newReply(message);
    sd_bus_message* secrets = reply.get();
    sd_bus_message_open_container(secrets, 'a', "{o(oayays)}");
    sd_bus_message_open_container(secrets, 'e', "o(oayays)");
    sd_bus_message_append(secrets, "o", ITEM);
    sd_bus_message_open_container(secrets, 'r', "oayays");
    sd_bus_message_append(secrets, "o", SESSION);
    sd_bus_message_append_array(secrets, 'y', nullptr, 0);
    sd_bus_message_append_array(secrets, 'y', value.data(), value.size());
    sd_bus_message_append(secrets, "s", "text/plain");
    sd_bus_message_close_container(secrets);
    sd_bus_message_close_container(secrets);
    sd_bus_message_close_container(secrets);
    return send(reply);
}
