#include "linux/x11/Atoms.h"

#include <array>
#include <string_view>
#include <utility>
#include <vector>

namespace x11 {

namespace {

using Name = std::pair<xcb_atom_t Atoms::*, std::string_view>;
constexpr std::array NAMES{
    Name{&Atoms::activeWindow, "_NET_ACTIVE_WINDOW"},
    Name{&Atoms::clientList, "_NET_CLIENT_LIST"},
    Name{&Atoms::clientListStacking, "_NET_CLIENT_LIST_STACKING"},
    Name{&Atoms::supportingWmCheck, "_NET_SUPPORTING_WM_CHECK"},
    Name{&Atoms::wmPid, "_NET_WM_PID"},
    Name{&Atoms::gtkApplicationId, "_GTK_APPLICATION_ID"},
    Name{&Atoms::kdeDesktopFile, "_KDE_NET_WM_DESKTOP_FILE"},
    Name{&Atoms::startupInfo, "_NET_STARTUP_INFO"},
    Name{&Atoms::startupInfoBegin, "_NET_STARTUP_INFO_BEGIN"},
    Name{&Atoms::windowType, "_NET_WM_WINDOW_TYPE"},
    Name{&Atoms::wmState, "_NET_WM_STATE"},
    Name{&Atoms::stateSkipTaskbar, "_NET_WM_STATE_SKIP_TASKBAR"},
    Name{&Atoms::stateSkipPager, "_NET_WM_STATE_SKIP_PAGER"},
    Name{&Atoms::serverTime, "_TARVEL_TIME"},
    Name{&Atoms::xkbRulesNames, "_XKB_RULES_NAMES"},
    Name{&Atoms::manager, "MANAGER"},
    Name{&Atoms::netWmName, "_NET_WM_NAME"},
    Name{&Atoms::trayOpcode, "_NET_SYSTEM_TRAY_OPCODE"},
    Name{&Atoms::trayVisual, "_NET_SYSTEM_TRAY_VISUAL"},
    Name{&Atoms::utf8String, "UTF8_STRING"},
    Name{&Atoms::xembedInfo, "_XEMBED_INFO"},
    Name{&Atoms::typeNormal, "_NET_WM_WINDOW_TYPE_NORMAL"},
    Name{&Atoms::typeDialog, "_NET_WM_WINDOW_TYPE_DIALOG"},
    Name{&Atoms::typeUtility, "_NET_WM_WINDOW_TYPE_UTILITY"},
    Name{&Atoms::typeToolbar, "_NET_WM_WINDOW_TYPE_TOOLBAR"},
    Name{&Atoms::typeMenu, "_NET_WM_WINDOW_TYPE_MENU"},
    Name{&Atoms::typeDropdownMenu, "_NET_WM_WINDOW_TYPE_DROPDOWN_MENU"},
    Name{&Atoms::typePopupMenu, "_NET_WM_WINDOW_TYPE_POPUP_MENU"},
    Name{&Atoms::typeTooltip, "_NET_WM_WINDOW_TYPE_TOOLTIP"},
    Name{&Atoms::typeNotification, "_NET_WM_WINDOW_TYPE_NOTIFICATION"},
    Name{&Atoms::typeCombo, "_NET_WM_WINDOW_TYPE_COMBO"},
    Name{&Atoms::typeDnd, "_NET_WM_WINDOW_TYPE_DND"},
    Name{&Atoms::typeSplash, "_NET_WM_WINDOW_TYPE_SPLASH"},
    Name{&Atoms::typeDock, "_NET_WM_WINDOW_TYPE_DOCK"},
    Name{&Atoms::typeDesktop, "_NET_WM_WINDOW_TYPE_DESKTOP"},
};

} // namespace

Atoms::Atoms(const Connection& connection)
{
    std::vector<xcb_intern_atom_cookie_t> cookies;
    cookies.reserve(NAMES.size());
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
