// Which characters become of dead keys and Compose sequences in a locale, as the desktop's and the
// user's own tables say. Where the locale has no table, or none can be found at all, `get` is that
// of en_US.UTF-8 or null. Main thread.
#pragma once

#include <memory>
#include <string>

struct xkb_compose_table;

namespace toolkit {

class ComposeTable
{
public:
    explicit ComposeTable(const std::string& locale);

    /// That of the locale this process runs in, read at the first call (some milliseconds). One
    /// diagnostic says that there is none.
    static const ComposeTable& ofThisProcess();

    xkb_compose_table* get() const { return table.get(); }

private:
    struct Release
    {
        void operator()(xkb_compose_table* table) const;
    };

    std::unique_ptr<xkb_compose_table, Release> table;
};

} // namespace toolkit
