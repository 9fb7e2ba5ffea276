#include "linux/x11/Extensions.h"

#include "linux/x11/Reply.h"
#include "linux/x11/Xkb.h"

#include <utility>

#include <xcb/randr.h>
#include <xcb/res.h>
#include <xcb/xinput.h>
#include <xcb/xtest.h>

namespace x11 {

namespace {

const xcb_query_extension_reply_t* present(xcb_connection_t* connection, xcb_extension_t& extension)
{
    const xcb_query_extension_reply_t* data = xcb_get_extension_data(connection, &extension);
    return data != nullptr && data->present != 0 ? data : nullptr;
}

void queryRandr(xcb_connection_t* connection, Extensions& extensions)
{
    const auto* data = present(connection, xcb_randr_id);
    if (data == nullptr) {
        return;
    }
    const Reply<xcb_randr_query_version_reply_t> version(xcb_randr_query_version_reply(
        connection, xcb_randr_query_version(connection, 1, 5), nullptr
    ));
    extensions.randr = version && std::pair(version->major_version, version->minor_version) >=
                                      std::pair<std::uint32_t, std::uint32_t>(1, 5);
    extensions.randrFirstEvent = data->first_event;
}

void queryXinput(xcb_connection_t* connection, Extensions& extensions)
{
    const auto* data = present(connection, xcb_input_id);
    if (data == nullptr) {
        return;
    }
    const Reply<xcb_input_xi_query_version_reply_t> version(xcb_input_xi_query_version_reply(
        connection, xcb_input_xi_query_version(connection, 2, 2), nullptr
    ));
    extensions.xinput = version && version->major_version >= 2;
    extensions.xinputOpcode = data->major_opcode;
}

void queryXtest(xcb_connection_t* connection, Extensions& extensions)
{
    if (present(connection, xcb_test_id) == nullptr) {
        return;
    }
    const Reply<xcb_test_get_version_reply_t> version(
        xcb_test_get_version_reply(connection, xcb_test_get_version(connection, 2, 2), nullptr)
    );
    extensions.xtest = version != nullptr;
}

void queryRes(xcb_connection_t* connection, Extensions& extensions)
{
    if (present(connection, xcb_res_id) == nullptr) {
        return;
    }
    const Reply<xcb_res_query_version_reply_t> version(
        xcb_res_query_version_reply(connection, xcb_res_query_version(connection, 1, 2), nullptr)
    );
    extensions.res = version && std::pair(version->server_major, version->server_minor) >=
                                    std::pair<std::uint16_t, std::uint16_t>(1, 2);
}

void queryXkb(xcb_connection_t* connection, Extensions& extensions)
{
    const auto* data = present(connection, xcb_xkb_id);
    if (data == nullptr) {
        return;
    }
    const Reply<xcb_xkb_use_extension_reply_t> use(
        xcb_xkb_use_extension_reply(connection, xcb_xkb_use_extension(connection, 1, 0), nullptr)
    );
    extensions.xkb = use && use->supported != 0;
    extensions.xkbEvent = data->first_event;
}

} // namespace

Extensions queryExtensions(xcb_connection_t* connection)
{
    for (xcb_extension_t* extension :
         {&xcb_randr_id, &xcb_input_id, &xcb_test_id, &xcb_res_id, &xcb_xkb_id}) {
        xcb_prefetch_extension_data(connection, extension);
    }
    Extensions extensions;
    queryRandr(connection, extensions);
    queryXinput(connection, extensions);
    queryXtest(connection, extensions);
    queryRes(connection, extensions);
    queryXkb(connection, extensions);
    return extensions;
}

} // namespace x11
