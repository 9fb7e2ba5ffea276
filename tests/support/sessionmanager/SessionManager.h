// A session manager (XSMP) that one program registers with, and that ends the session on request.
// It works on a thread of its own. One in a process.
#pragma once

#include <atomic>
#include <chrono>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

#include <X11/ICE/ICElib.h>
#include <X11/SM/SMlib.h>

class SessionManager
{
public:
    /// Throws `desktop::Failure` when it cannot listen.
    SessionManager();
    ~SessionManager();
    SessionManager(const SessionManager&) = delete;
    SessionManager& operator=(const SessionManager&) = delete;
    SessionManager(SessionManager&&) = delete;
    SessionManager& operator=(SessionManager&&) = delete;

    /// What programs find it by, in the environment variable SESSION_MANAGER.
    [[nodiscard]] const std::string& address() const { return networkIds; }

    /// Waits until the program has registered and answered the first request to save itself, with
    /// which the protocol begins.
    bool waitForClient(std::chrono::milliseconds timeout) const;

    /// Announces the end of the session. The program's answer: whether it agrees; nothing when it
    /// does not answer.
    std::optional<bool> askToShutDown(std::chrono::milliseconds timeout);

    /// Tells the program to end.
    void die();

private:
    static Status newClient(
        SmsConn client, SmPointer self, unsigned long* mask, SmsCallbacks* callbacks, char** reason
    );
    static Status registerClient(SmsConn client, SmPointer self, char* previousId);
    static void interactRequest(SmsConn client, SmPointer self, int dialog);
    static void interactDone(SmsConn client, SmPointer self, Bool cancel);
    static void secondPhase(SmsConn client, SmPointer self);
    static void saved(SmsConn client, SmPointer self, Bool success);
    static void closed(SmsConn client, SmPointer self, int count, char** reasons);
    static void setProperties(SmsConn client, SmPointer self, int count, SmProp** properties);

    void run();
    void work();
    void post(std::function<void()> request);
    void answered(std::optional<bool> agreed);
    [[nodiscard]] std::optional<bool> latestAnswer() const;
    std::optional<bool> waitForAnswer(std::chrono::milliseconds timeout) const;
    void accept(IceListenObj listener);

    std::string networkIds;
    int listenerCount = 0;
    IceListenObj* listeners = nullptr;
    IceConn connection = nullptr; // this and the next: the thread's
    SmsConn program = nullptr;
    mutable std::mutex mutex;
    std::deque<std::function<void()>> requests; // this and the next: guarded by the mutex
    std::optional<bool> answer;
    std::atomic<bool> stopping = false;
    std::thread thread;
};
