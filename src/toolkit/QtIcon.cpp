#include "toolkit/QtIcon.h"

#include <utility>

namespace toolkit {

QtIcon::QtIcon(Loader loader) : loader(std::move(loader)) {}

const QIcon& QtIcon::icon() const
{
    if (!loaded.has_value()) {
        loaded = loader ? loader() : QIcon();
    }
    return *loaded;
}

QIcon QtIcon::of(const platform::IconHandle& handle)
{
    const auto* icon = dynamic_cast<const QtIcon*>(handle.get());
    return icon == nullptr ? QIcon() : icon->icon();
}

} // namespace toolkit
