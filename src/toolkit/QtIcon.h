// The icon of the core as the toolkit draws it: the adapters make it, the windows draw it. Any
// thread may make one; what stands behind it is looked up when the main thread first draws it, so
// that a long list of applications costs nothing until it is seen.
#pragma once

#include "platform/Icon.h"

#include <QIcon>

#include <functional>
#include <optional>

namespace toolkit {

class QtIcon final : public platform::Icon
{
public:
    using Loader = std::function<QIcon()>;

    /// `loader` is called at most once, on the main thread.
    explicit QtIcon(Loader loader);

    /// A null icon where there is nothing to draw. Main thread only.
    const QIcon& icon() const;

    /// What stands behind `handle`; a null icon where it is empty or none of the toolkit's. Main
    /// thread only.
    static QIcon of(const platform::IconHandle& handle);

private:
    Loader loader;
    mutable std::optional<QIcon> loaded;
};

} // namespace toolkit
