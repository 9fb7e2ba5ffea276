#include "app/Constants.h"

#include "platform/Bundles.h"
#include "platform/Fatal.h"
#include "platform/Platform.h"

namespace app {

std::string Constants::BUNDLE_ID()
{
    std::string identifier =
        platform::current().bundles.mainBundle().identifier.value_or(std::string());
    if (identifier.empty()) {
        platform::fatal("the main bundle has no identifier");
    }
    return identifier;
}

} // namespace app
