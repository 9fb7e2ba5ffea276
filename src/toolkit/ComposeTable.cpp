#include "toolkit/ComposeTable.h"

#include "platform/Log.h"
#include "platform/Platform.h"

#include <clocale>

#include <xkbcommon/xkbcommon-compose.h>

namespace toolkit {

namespace {

constexpr auto FALLBACK = "en_US.UTF-8";

struct ReleaseContext
{
    void operator()(xkb_context* context) const { xkb_context_unref(context); }
};

xkb_compose_table* read(xkb_context* context, const char* locale)
{
    return xkb_compose_table_new_from_locale(context, locale, XKB_COMPOSE_COMPILE_NO_FLAGS);
}

} // namespace

void ComposeTable::Release::operator()(xkb_compose_table* table) const
{
    xkb_compose_table_unref(table);
}

ComposeTable::ComposeTable(const std::string& locale)
{
    const std::unique_ptr<xkb_context, ReleaseContext> context(
        xkb_context_new(XKB_CONTEXT_NO_DEFAULT_INCLUDES)
    );
    if (context == nullptr) {
        return;
    }
    // What it would say of a file that it cannot read is not for this program's standard error.
    xkb_context_set_log_level(context.get(), XKB_LOG_LEVEL_CRITICAL);
    table.reset(read(context.get(), locale.c_str()));
    if (table == nullptr) {
        table.reset(read(context.get(), FALLBACK));
    }
}

const ComposeTable& ComposeTable::ofThisProcess()
{
    static const ComposeTable table = [] {
        // NOLINTNEXTLINE(concurrency-mt-unsafe): it is only asked, on the thread that sets it
        const char* const locale = std::setlocale(LC_CTYPE, nullptr);
        ComposeTable read(locale == nullptr ? FALLBACK : locale);
        if (read.get() == nullptr) {
            platform::current().log.diagnostic(
                "there is no table of dead keys and Compose sequences; passwords are typed without"
            );
        }
        return read;
    }();
    return table;
}

} // namespace toolkit
