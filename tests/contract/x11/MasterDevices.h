// A second pair of master devices on the display, and a look at who holds which.
#pragma once

#include "desktop/XConnection.h"

#include <vector>

#include <xcb/xinput.h>

class SecondMasters
{
public:
    explicit SecondMasters(desktop::XConnection& connection) : connection(connection)
    {
        const struct
        {
            xcb_input_add_master_t change;
            char name[8];
        } request{{XCB_INPUT_HIERARCHY_CHANGE_TYPE_ADD_MASTER, 4, 6, 1, 1}, "second"};

        xcb_input_xi_query_version_reply_t* version = xcb_input_xi_query_version_reply(
            connection.get(), xcb_input_xi_query_version(connection.get(), 2, 2), nullptr
        );
        const desktop::Reply<xcb_input_xi_query_version_reply_t> owned(version);
        xcb_input_xi_change_hierarchy(
            connection.get(),
            1,
            static_cast<const xcb_input_hierarchy_change_t*>(static_cast<const void*>(&request))
        );
        connection.sync();
    }

    /// What a grab of the device by this program answers.
    std::uint8_t grabStatus(xcb_input_device_id_t device)
    {
        const std::uint32_t mask = XCB_INPUT_XI_EVENT_MASK_KEY_PRESS;
        const desktop::Reply<xcb_input_xi_grab_device_reply_t> reply(xcb_input_xi_grab_device_reply(
            connection.get(),
            xcb_input_xi_grab_device(
                connection.get(),
                connection.root(),
                XCB_CURRENT_TIME,
                XCB_NONE,
                device,
                XCB_INPUT_GRAB_MODE_22_ASYNC,
                XCB_INPUT_GRAB_MODE_22_ASYNC,
                XCB_INPUT_GRAB_OWNER_NO_OWNER,
                1,
                &mask
            ),
            nullptr
        ));
        if (reply && reply->status == XCB_GRAB_STATUS_SUCCESS) { // only to see
            xcb_input_xi_ungrab_device(connection.get(), XCB_CURRENT_TIME, device);
            connection.sync();
        }
        return reply ? reply->status : std::uint8_t{XCB_GRAB_STATUS_INVALID_TIME};
    }

    std::vector<xcb_input_device_id_t> keyboards()
    {
        const desktop::Reply<xcb_input_xi_query_device_reply_t> reply(
            xcb_input_xi_query_device_reply(
                connection.get(),
                xcb_input_xi_query_device(connection.get(), XCB_INPUT_DEVICE_ALL_MASTER),
                nullptr
            )
        );
        std::vector<xcb_input_device_id_t> found;
        auto infos = xcb_input_xi_query_device_infos_iterator(reply.get());
        for (; infos.rem > 0; xcb_input_xi_device_info_next(&infos)) {
            if (infos.data->type == XCB_INPUT_DEVICE_TYPE_MASTER_KEYBOARD) {
                found.push_back(infos.data->deviceid);
            }
        }
        return found;
    }

private:
    desktop::XConnection& connection;
};
