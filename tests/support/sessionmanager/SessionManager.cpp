#include "sessionmanager/SessionManager.h"

#include "desktop/Failure.h"
#include "desktop/Wait.h"

#include <array>
#include <cstdlib>
#include <utility>

#include <poll.h>

namespace {

constexpr int WAIT_MILLISECONDS = 5;

SessionManager& of(SmPointer self)
{
    return *static_cast<SessionManager*>(self);
}

Bool everybodyMayCome(char* /*host*/)
{
    return True;
}

bool isReadable(int descriptor, int milliseconds)
{
    pollfd waited{descriptor, POLLIN, 0};
    return ::poll(&waited, 1, milliseconds) > 0;
}

} // namespace

SessionManager::SessionManager()
{
    std::array<char, 256> error{};
    const auto size = static_cast<int>(error.size());
    if (SmsInitialize("test", "1", newClient, this, everybodyMayCome, size, error.data()) == 0 ||
        IceListenForConnections(&listenerCount, &listeners, size, error.data()) == 0) {
        throw desktop::Failure(std::string("no session manager: ") + error.data());
    }
    for (int index = 0; index < listenerCount; ++index) {
        IceSetHostBasedAuthProc(listeners[index], everybodyMayCome);
    }
    char* list = IceComposeNetworkIdList(listenerCount, listeners);
    networkIds = list;
    std::free(list);
    thread = std::thread([this] { run(); });
}

SessionManager::~SessionManager()
{
    stopping = true;
    thread.join();
    if (program != nullptr) {
        SmsCleanUp(program);
    }
    if (connection != nullptr) {
        IceSetShutdownNegotiation(connection, False);
        IceCloseConnection(connection);
    }
    IceFreeListenObjs(listenerCount, listeners);
}

bool SessionManager::waitForClient(std::chrono::milliseconds timeout) const
{
    return waitForAnswer(timeout).has_value();
}

std::optional<bool> SessionManager::askToShutDown(std::chrono::milliseconds timeout)
{
    answered(std::nullopt);
    post([this] { SmsSaveYourself(program, SmSaveBoth, True, SmInteractStyleAny, False); });
    return waitForAnswer(timeout);
}

void SessionManager::die()
{
    post([this] {
        SmsDie(program);
        IceFlush(connection);
    });
}

Status SessionManager::newClient(
    SmsConn client, SmPointer self, unsigned long* mask, SmsCallbacks* callbacks, char** /*reason*/
)
{
    of(self).program = client;
    *mask = SmsRegisterClientProcMask | SmsInteractRequestProcMask | SmsInteractDoneProcMask |
            SmsSaveYourselfRequestProcMask | SmsSaveYourselfP2RequestProcMask |
            SmsSaveYourselfDoneProcMask | SmsCloseConnectionProcMask | SmsSetPropertiesProcMask |
            SmsDeletePropertiesProcMask | SmsGetPropertiesProcMask;
    callbacks->register_client = {registerClient, self};
    callbacks->interact_request = {interactRequest, self};
    callbacks->interact_done = {interactDone, self};
    callbacks->save_yourself_request = {
        [](SmsConn, SmPointer, int, Bool, int, Bool, Bool) {}, self};
    callbacks->save_yourself_phase2_request = {secondPhase, self};
    callbacks->save_yourself_done = {saved, self};
    callbacks->close_connection = {closed, self};
    callbacks->set_properties = {setProperties, self};
    callbacks->delete_properties = {[](SmsConn, SmPointer, int, char**) {}, self};
    callbacks->get_properties = {
        [](SmsConn asking, SmPointer) { SmsReturnProperties(asking, 0, nullptr); }, self};
    return True;
}

Status SessionManager::registerClient(SmsConn client, SmPointer /*self*/, char* previousId)
{
    if (previousId != nullptr) {
        std::free(previousId);
        return False; // this one remembers nobody
    }
    char* identifier = SmsGenerateClientID(client);
    SmsRegisterClientReply(client, identifier);
    std::free(identifier);
    SmsSaveYourself(client, SmSaveLocal, False, SmInteractStyleNone, False);
    return True;
}

void SessionManager::interactRequest(SmsConn client, SmPointer /*self*/, int /*dialog*/)
{
    SmsInteract(client);
}

void SessionManager::interactDone(SmsConn client, SmPointer self, Bool cancel)
{
    if (cancel != False) {
        of(self).answered(false);
        SmsShutdownCancelled(client);
    }
}

void SessionManager::secondPhase(SmsConn client, SmPointer /*self*/)
{
    SmsSaveYourselfPhase2(client);
}

void SessionManager::saved(SmsConn client, SmPointer self, Bool success)
{
    of(self).answered(success != False);
    SmsSaveComplete(client);
}

void SessionManager::closed(SmsConn client, SmPointer self, int count, char** reasons)
{
    SmFreeReasons(count, reasons);
    SmsCleanUp(client);
    of(self).program = nullptr;
}

void SessionManager::setProperties(
    SmsConn /*client*/, SmPointer /*self*/, int count, SmProp** properties
)
{
    for (int index = 0; index < count; ++index) {
        SmFreeProperty(properties[index]);
    }
    std::free(properties);
}

void SessionManager::run()
{
    while (!stopping) {
        work();
        std::deque<std::function<void()>> due;
        {
            const std::lock_guard lock(mutex);
            due.swap(requests);
        }
        for (const auto& request : due) {
            if (program != nullptr) {
                request();
            }
        }
    }
}

void SessionManager::post(std::function<void()> request)
{
    const std::lock_guard lock(mutex);
    requests.push_back(std::move(request));
}

void SessionManager::answered(std::optional<bool> agreed)
{
    const std::lock_guard lock(mutex);
    answer = agreed;
}

std::optional<bool> SessionManager::latestAnswer() const
{
    const std::lock_guard lock(mutex);
    return answer;
}

std::optional<bool> SessionManager::waitForAnswer(std::chrono::milliseconds timeout) const
{
    desktop::waitUntil([this] { return latestAnswer().has_value(); }, timeout);
    return latestAnswer();
}

void SessionManager::work()
{
    for (int index = 0; index < listenerCount; ++index) {
        if (isReadable(IceGetListenConnectionNumber(listeners[index]), WAIT_MILLISECONDS)) {
            accept(listeners[index]);
        }
    }
    while (connection != nullptr && isReadable(IceConnectionNumber(connection), WAIT_MILLISECONDS)
    ) {
        if (IceProcessMessages(connection, nullptr, nullptr) != IceProcessMessagesSuccess) {
            connection = nullptr;
        }
    }
}

/// A further program waits for the first one to go.
void SessionManager::accept(IceListenObj listener)
{
    if (connection == nullptr) {
        IceAcceptStatus status{};
        connection = IceAcceptConnection(listener, &status);
    }
}
