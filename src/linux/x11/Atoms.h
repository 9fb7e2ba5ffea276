// The names that the adapters share with window managers and other programs, as the display numbers
// them. Read once, then for any thread.
#pragma once

#include "linux/x11/Connection.h"

namespace x11 {

struct Atoms
{
    explicit Atoms(const Connection& connection);

    xcb_atom_t activeWindow = XCB_NONE;
    xcb_atom_t clientList = XCB_NONE;
    xcb_atom_t clientListStacking = XCB_NONE;
    xcb_atom_t supportingWmCheck = XCB_NONE;
    xcb_atom_t wmPid = XCB_NONE;
    xcb_atom_t gtkApplicationId = XCB_NONE;
    xcb_atom_t kdeDesktopFile = XCB_NONE;
    xcb_atom_t startupInfo = XCB_NONE;
    xcb_atom_t startupInfoBegin = XCB_NONE;
    xcb_atom_t windowType = XCB_NONE;
    xcb_atom_t wmState = XCB_NONE;
    xcb_atom_t stateSkipTaskbar = XCB_NONE;
    xcb_atom_t stateSkipPager = XCB_NONE;
    xcb_atom_t serverTime = XCB_NONE;
    xcb_atom_t xkbRulesNames = XCB_NONE;

    xcb_atom_t manager = XCB_NONE;
    xcb_atom_t netWmName = XCB_NONE;
    xcb_atom_t trayOpcode = XCB_NONE;
    xcb_atom_t trayVisual = XCB_NONE;
    xcb_atom_t utf8String = XCB_NONE;
    xcb_atom_t xembedInfo = XCB_NONE;

    xcb_atom_t typeNormal = XCB_NONE;
    xcb_atom_t typeDialog = XCB_NONE;
    xcb_atom_t typeUtility = XCB_NONE;
    xcb_atom_t typeToolbar = XCB_NONE;
    xcb_atom_t typeMenu = XCB_NONE;
    xcb_atom_t typeDropdownMenu = XCB_NONE;
    xcb_atom_t typePopupMenu = XCB_NONE;
    xcb_atom_t typeTooltip = XCB_NONE;
    xcb_atom_t typeNotification = XCB_NONE;
    xcb_atom_t typeCombo = XCB_NONE;
    xcb_atom_t typeDnd = XCB_NONE;
    xcb_atom_t typeSplash = XCB_NONE;
    xcb_atom_t typeDock = XCB_NONE;
    xcb_atom_t typeDesktop = XCB_NONE;
};

} // namespace x11
