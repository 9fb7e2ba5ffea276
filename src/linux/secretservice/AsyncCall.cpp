#include "linux/secretservice/AsyncCall.h"

namespace secretservice {

AsyncCall::~AsyncCall()
{
    if (state->result) {
        delete state;
    } else {
        state->abandoned = true;
    }
}

void AsyncCall::finished(GObject* /*source*/, GAsyncResult* result, gpointer data)
{
    auto* state = static_cast<State*>(data);
    if (state->abandoned) {
        delete state;
        return;
    }
    state->result.reset(G_ASYNC_RESULT(g_object_ref(result)));
}

} // namespace secretservice
