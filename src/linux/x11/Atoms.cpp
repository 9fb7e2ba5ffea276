#include "linux/x11/Atoms.h"

#include <string_view>
#include <utility>
#include <vector>

namespace x11 {

namespace {

constexpr std::pair<xcb_atom_t Atoms::*, std::string_view> NAMES[] = {
    {&Atoms::activeWindow, "_NET_ACTIVE_WINDOW"},
    {&Atoms::clientList, "_NET_CLIENT_LIST"},
    {&Atoms::clientListStacking, "_NET_CLIENT_LIST_STACKING"},
    {&Atoms::supportingWmCheck, "_NET_SUPPORTING_WM_CHECK"},
    {&Atoms::wmPid, "_NET_WM_PID"},
    {&Atoms::windowType, "_NET_WM_WINDOW_TYPE"},
    {&Atoms::serverTime, "_TARVEL_TIME"},
    {&Atoms::xkbRulesNames, "_XKB_RULES_NAMES"},
    {&Atoms::typeNormal, "_NET_WM_WINDOW_TYPE_NORMAL"},
    {&Atoms::typeDialog, "_NET_WM_WINDOW_TYPE_DIALOG"},
    {&Atoms::typeUtility, "_NET_WM_WINDOW_TYPE_UTILITY"},
    {&Atoms::typeToolbar, "_NET_WM_WINDOW_TYPE_TOOLBAR"},
    {&Atoms::typeMenu, "_NET_WM_WINDOW_TYPE_MENU"},
    {&Atoms::typeDropdownMenu, "_NET_WM_WINDOW_TYPE_DROPDOWN_MENU"},
    {&Atoms::typePopupMenu, "_NET_WM_WINDOW_TYPE_POPUP_MENU"},
    {&Atoms::typeTooltip, "_NET_WM_WINDOW_TYPE_TOOLTIP"},
    {&Atoms::typeNotification, "_NET_WM_WINDOW_TYPE_NOTIFICATION"},
    {&Atoms::typeCombo, "_NET_WM_WINDOW_TYPE_COMBO"},
    {&Atoms::typeDnd, "_NET_WM_WINDOW_TYPE_DND"},
    {&Atoms::typeSplash, "_NET_WM_WINDOW_TYPE_SPLASH"},
    {&Atoms::typeDock, "_NET_WM_WINDOW_TYPE_DOCK"},
    {&Atoms::typeDesktop, "_NET_WM_WINDOW_TYPE_DESKTOP"},
};

} // namespace

Atoms::Atoms(const Connection& connection)
{
    std::vector<xcb_intern_atom_cookie_t> cookies;
    cookies.reserve(std::size(NAMES));
    for (const auto& [member, name] : NAMES) {
        cookies.push_back(xcb_intern_atom(
            connection.get(), 0, static_cast<std::uint16_t>(name.size()), name.data()
        ));
    }
    for (std::size_t index = 0; index < cookies.size(); ++index) {
        const Reply<xcb_intern_atom_reply_t> reply(
            xcb_intern_atom_reply(connection.get(), cookies[index], nullptr)
        );
        this->*NAMES[index].first = reply ? reply->atom : XCB_NONE;
    }
}

} // namespace x11
