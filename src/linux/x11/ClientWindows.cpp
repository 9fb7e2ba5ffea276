#include "linux/x11/ClientWindows.h"

#include "platform/Call.h"

#include <algorithm>
#include <set>

namespace x11 {

void ClientWindows::start()
{
    readAll();
}

void ClientWindows::handle(const xcb_generic_event_t& event)
{
    switch (typeOf(event)) {
    case XCB_PROPERTY_NOTIFY:
        handleProperty(as<xcb_property_notify_event_t>(event));
        break;
    case XCB_MAP_NOTIFY:
        handleMap(as<xcb_map_notify_event_t>(event));
        break;
    case XCB_UNMAP_NOTIFY:
        handleUnmap(as<xcb_unmap_notify_event_t>(event));
        break;
    case XCB_DESTROY_NOTIFY:
        forget(as<xcb_destroy_notify_event_t>(event).window);
        break;
    default:
        break;
    }
}

void ClientWindows::noteUse(xcb_window_t window)
{
    // It may be in use before the window manager lists it.
    constexpr std::size_t REMEMBERED = 64;
    std::erase(used, window);
    used.push_back(window);
    if (used.size() > REMEMBERED) {
        used.erase(used.begin());
    }
}

xcb_window_t
ClientWindows::latest(const std::function<bool(const workspace::WindowFacts& facts)>& matches) const
{
    const auto isOne = [&](xcb_window_t window) {
        const auto found = windows.find(window);
        return found != windows.end() && matches(found->second);
    };
    const auto latest = std::find_if(used.rbegin(), used.rend(), isOne);
    if (latest != used.rend()) {
        return *latest;
    }
    const std::vector<xcb_window_t> stacked = stackedWindows();
    const auto topmost = std::find_if(stacked.rbegin(), stacked.rend(), isOne);
    if (topmost != stacked.rend()) {
        return *topmost;
    }
    const auto any = std::find_if(windows.begin(), windows.end(), [&](const auto& entry) {
        return matches(entry.second);
    });
    return any != windows.end() ? any->first : XCB_NONE;
}

pid_t ClientWindows::processOf(xcb_window_t window) const
{
    const auto found = windows.find(window);
    return found != windows.end() ? found->second.processIdentifier : inspector.processOf(window);
}

bool ClientWindows::managed() const
{
    const xcb_atom_t check = desktop.atoms().supportingWmCheck;
    const auto announced =
        inspector.identifiers(desktop.connection().root(), check, XCB_ATOM_WINDOW);
    if (announced.empty()) {
        return false;
    }
    // A window manager that died leaves its announcement on the root, but not its own window.
    const auto confirmed = inspector.identifiers(announced.front(), check, XCB_ATOM_WINDOW);
    return !confirmed.empty() && confirmed.front() == announced.front();
}

void ClientWindows::readAll()
{
    const std::vector<xcb_window_t> current = currentWindows();
    const std::set<xcb_window_t> present(current.begin(), current.end());
    std::vector<xcb_window_t> gone;
    for (const auto& [window, facts] : windows) {
        if (!present.contains(window)) {
            gone.push_back(window);
        }
    }
    for (const xcb_window_t window : gone) {
        windows.erase(window);
        reportGone(window);
    }
    for (const xcb_window_t window : current) {
        add(window);
    }
}

std::vector<xcb_window_t> ClientWindows::currentWindows() const
{
    return managed() ? rootList(desktop.atoms().clientList) : viewableChildren();
}

std::vector<xcb_window_t> ClientWindows::stackedWindows() const
{
    return managed() ? rootList(desktop.atoms().clientListStacking) : viewableChildren();
}

std::vector<xcb_window_t> ClientWindows::rootList(xcb_atom_t property) const
{
    return inspector.identifiers(desktop.connection().root(), property, XCB_ATOM_WINDOW);
}

std::vector<xcb_window_t> ClientWindows::viewableChildren() const
{
    const Connection& connection = desktop.connection();
    const Reply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(
        connection.get(), xcb_query_tree(connection.get(), connection.root()), nullptr
    ));
    std::vector<xcb_window_t> viewable;
    if (!tree) {
        return viewable;
    }
    const xcb_window_t* children = xcb_query_tree_children(tree.get());
    for (int index = 0; index < xcb_query_tree_children_length(tree.get()); ++index) {
        const Reply<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
            connection.get(), xcb_get_window_attributes(connection.get(), children[index]), nullptr
        ));
        if (attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE) {
            viewable.push_back(children[index]);
        }
    }
    return viewable;
}

void ClientWindows::add(xcb_window_t window)
{
    if (windows.contains(window)) {
        return;
    }
    // A window manager may go on listing a window that is no longer there.
    desktop.connection().selectEvents(
        window,
        XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_FOCUS_CHANGE |
            XCB_EVENT_MASK_STRUCTURE_NOTIFY
    );
    if (inspector.isUserWindow(window)) {
        const workspace::WindowFacts facts = inspector.factsOf(window);
        windows[window] = facts;
        report(facts);
    }
}

void ClientWindows::forget(xcb_window_t window)
{
    std::erase(used, window);
    if (windows.erase(window) > 0) {
        reportGone(window);
    }
}

void ClientWindows::handleProperty(const xcb_property_notify_event_t& event)
{
    const Atoms& atoms = desktop.atoms();
    const bool ofRoot = event.window == desktop.connection().root();
    if (ofRoot && (event.atom == atoms.clientList || event.atom == atoms.supportingWmCheck)) {
        readAll();
    } else if (event.atom == XCB_ATOM_WM_CLASS || event.atom == atoms.windowType ||
               event.atom == atoms.gtkApplicationId || event.atom == atoms.kdeDesktopFile) {
        update(event.window);
    }
}

void ClientWindows::handleMap(const xcb_map_notify_event_t& event)
{
    const bool ofRoot = event.event == desktop.connection().root();
    if (ofRoot && event.override_redirect == 0 && !managed()) {
        add(event.window);
    }
}

/// With a window manager its list tells.
void ClientWindows::handleUnmap(const xcb_unmap_notify_event_t& event)
{
    if (event.event == desktop.connection().root() && windows.contains(event.window) &&
        !managed()) {
        windows.erase(event.window);
        reportGone(event.window);
    }
}

void ClientWindows::reportGone(xcb_window_t window) const
{
    platform::call(onGone, window);
}

void ClientWindows::report(const workspace::WindowFacts& facts) const
{
    platform::call(onShown, facts);
}

void ClientWindows::update(xcb_window_t window)
{
    const auto known = windows.find(window);
    if (known == windows.end()) { // it may have become a window that counts
        const std::vector<xcb_window_t> current = currentWindows();
        if (std::find(current.begin(), current.end(), window) != current.end()) {
            add(window);
        }
        return;
    }
    const workspace::WindowFacts facts = inspector.factsOf(window);
    if (facts.windowClass != known->second.windowClass ||
        facts.instanceName != known->second.instanceName ||
        facts.applicationId != known->second.applicationId) {
        known->second = facts;
        report(facts);
    }
}

} // namespace x11
