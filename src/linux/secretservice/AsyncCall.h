// The answer to one asynchronous call of the library, for which the calling thread waits. The
// library never answers some calls (a service that goes away during its prompt), so an answer may
// also come when nobody waits any more. Its blocking calls are not used: they leave objects on
// contexts that nobody runs, which then keep a dead connection for ever.
#pragma once

#include "linux/secretservice/Glib.h"

namespace secretservice {

class AsyncCall
{
public:
    AsyncCall() : state(new State) {}

    ~AsyncCall();
    AsyncCall(const AsyncCall&) = delete;
    AsyncCall& operator=(const AsyncCall&) = delete;
    AsyncCall(AsyncCall&&) = delete;
    AsyncCall& operator=(AsyncCall&&) = delete;

    /// What the library is to call, with `data`.
    static void finished(GObject* source, GAsyncResult* result, gpointer data);

    [[nodiscard]] gpointer data() const { return state; }

    /// Borrowed; nullptr while there is no answer.
    [[nodiscard]] GAsyncResult* result() const { return state->result.get(); }

private:
    /// The library's, once nobody waits for an answer that has not come.
    struct State
    {
        ObjectPtr<GAsyncResult> result;
        bool abandoned = false;
    };

    State* state;
};

} // namespace secretservice
