#include "helper/Helper.h"
#include "linux/session/Programs.h"
#include "linux/session/SessionInstance.h"

#include <unistd.h>

int main()
{
    session::SessionInstance instance(session::HELPER);
    instance.onProblem = helper::Helper::complain;
    if (instance.acquire(session::SecondStart::IsQuiet) == session::Acquired::AlreadyRunning) {
        return 0;
    }
    // Not ended together with the terminal that somebody may have started the agent from.
    ::setsid();
    return helper::Helper().run(instance);
}
