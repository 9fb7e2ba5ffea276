#include "desktop/PrivateKeyring.h"

#include "desktop/Failure.h"
#include "desktop/Wait.h"

namespace desktop {

namespace {

void waitForService(const PrivateBus& bus)
{
    const bool up = waitUntil(
        [&bus] { return bus.hasOwner("org.freedesktop.secrets"); }, std::chrono::seconds(20)
    );
    if (!up) {
        throw Failure("the keyring does not come up");
    }
}

} // namespace

PrivateKeyring::PrivateKeyring(const PrivateBus& bus, const Environment& environment)
    : daemon(
          {.arguments =
               {"gnome-keyring-daemon", "--foreground", "--components=secrets", "--unlock"},
           .environment = environment,
           .input = PASSWORD}
      )
{
    waitForService(bus);
}

PrivateKeyring::PrivateKeyring(
    const PrivateBus& bus, const Environment& environment, Locked /*locked*/
)
    : daemon(
          {.arguments = {"gnome-keyring-daemon", "--foreground", "--components=secrets"},
           .environment = environment}
      )
{
    waitForService(bus);
}

} // namespace desktop
