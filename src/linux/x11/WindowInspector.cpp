#include "linux/x11/WindowInspector.h"

#include <algorithm>
#include <array>
#include <climits>

#include <unistd.h>
#include <xcb/res.h>

namespace x11 {

namespace {

constexpr std::uint32_t LONGEST_PROPERTY = 16384; // 32-bit units

Reply<xcb_get_property_reply_t>
property(const Connection& connection, xcb_window_t window, xcb_atom_t name, xcb_atom_t type)
{
    return Reply<xcb_get_property_reply_t>(xcb_get_property_reply(
        connection.get(),
        xcb_get_property(connection.get(), 0, window, name, type, 0, LONGEST_PROPERTY),
        nullptr
    ));
}

} // namespace

pid_t WindowInspector::processOf(xcb_window_t window) const
{
    const pid_t process = processByServer(window);
    if (process != 0) {
        return process;
    }
    const auto claimed = identifiers(window, desktop.atoms().wmPid, XCB_ATOM_CARDINAL);
    return claimed.empty() || !isOfThisMachine(window) ? 0 : static_cast<pid_t>(claimed.front());
}

/// A number of another machine's process would be somebody else's here.
bool WindowInspector::isOfThisMachine(xcb_window_t window) const
{
    std::array<char, HOST_NAME_MAX + 1> host{};
    const std::string machine = text(window, XCB_ATOM_WM_CLIENT_MACHINE);
    return machine.empty() || (::gethostname(host.data(), host.size() - 1) == 0 &&
                               machine.substr(0, machine.find('\0')) == host.data());
}

workspace::WindowFacts WindowInspector::factsOf(xcb_window_t window) const
{
    // Two texts, each ended by a zero byte: instance, class.
    const std::string names = text(window, XCB_ATOM_WM_CLASS);
    const std::size_t end = std::min(names.find('\0'), names.size());
    workspace::WindowFacts facts;
    facts.window = window;
    facts.processIdentifier = processOf(window);
    facts.remote = !isOfThisMachine(window);
    for (const xcb_atom_t name :
         {desktop.atoms().gtkApplicationId, desktop.atoms().kdeDesktopFile}) {
        if (facts.applicationId.empty()) {
            facts.applicationId = text(window, name);
        }
    }
    facts.instanceName = names.substr(0, end);
    if (end < names.size()) {
        facts.windowClass = names.substr(end + 1, names.find('\0', end + 1) - end - 1);
    }
    return facts;
}

bool WindowInspector::isUserWindow(xcb_window_t window) const
{
    const Connection& connection = desktop.connection();
    const Reply<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
        connection.get(), xcb_get_window_attributes(connection.get(), window), nullptr
    ));
    return attributes && attributes->_class == XCB_WINDOW_CLASS_INPUT_OUTPUT &&
           attributes->override_redirect == 0 && hasUserType(window);
}

xcb_window_t WindowInspector::focusedWindow() const
{
    const Connection& connection = desktop.connection();
    const Reply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection.get(), xcb_get_input_focus(connection.get()), nullptr)
    );
    const bool some = reply && reply->focus != XCB_NONE &&
                      reply->focus != XCB_INPUT_FOCUS_POINTER_ROOT &&
                      reply->focus != connection.root();
    return some ? reply->focus : XCB_NONE;
}

std::vector<std::uint32_t>
WindowInspector::identifiers(xcb_window_t window, xcb_atom_t name, xcb_atom_t type) const
{
    constexpr std::uint8_t FORMAT = 32;
    const auto reply = property(desktop.connection(), window, name, type);
    if (!reply || reply->format != FORMAT) {
        return {};
    }
    const auto* first = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    return {first, first + reply->value_len};
}

pid_t WindowInspector::processByServer(xcb_window_t window) const
{
    const Connection& connection = desktop.connection();
    if (!connection.extensions().res) {
        return 0;
    }
    const xcb_res_client_id_spec_t question{window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    const Reply<xcb_res_query_client_ids_reply_t> reply(xcb_res_query_client_ids_reply(
        connection.get(), xcb_res_query_client_ids(connection.get(), 1, &question), nullptr
    ));
    if (!reply) {
        return 0;
    }
    auto values = xcb_res_query_client_ids_ids_iterator(reply.get());
    for (; values.rem > 0; xcb_res_client_id_value_next(&values)) {
        const bool isProcess =
            (values.data->spec.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID) != 0;
        if (isProcess && xcb_res_client_id_value_value_length(values.data) > 0) {
            return static_cast<pid_t>(*xcb_res_client_id_value_value(values.data));
        }
    }
    return 0;
}

bool WindowInspector::hasUserType(xcb_window_t window) const
{
    const Atoms& atoms = desktop.atoms();
    const std::array<xcb_atom_t, 3> shownToUsers{
        atoms.typeNormal, atoms.typeDialog, atoms.typeUtility};
    const std::array<xcb_atom_t, 11> others{
        atoms.typeToolbar,
        atoms.typeMenu,
        atoms.typeDropdownMenu,
        atoms.typePopupMenu,
        atoms.typeTooltip,
        atoms.typeNotification,
        atoms.typeCombo,
        atoms.typeDnd,
        atoms.typeSplash,
        atoms.typeDock,
        atoms.typeDesktop};
    // The first one that is known counts; the list may begin with a desktop's own inventions.
    for (const xcb_atom_t type : identifiers(window, atoms.windowType, XCB_ATOM_ATOM)) {
        if (std::find(shownToUsers.begin(), shownToUsers.end(), type) != shownToUsers.end()) {
            return true;
        }
        if (std::find(others.begin(), others.end(), type) != others.end()) {
            return false;
        }
    }
    return true;
}

std::string WindowInspector::text(xcb_window_t window, xcb_atom_t name) const
{
    const auto reply = property(desktop.connection(), window, name, XCB_GET_PROPERTY_TYPE_ANY);
    if (!reply) {
        return {};
    }
    return {
        static_cast<const char*>(xcb_get_property_value(reply.get())),
        static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
}

} // namespace x11
