#include "linux/x11/X11Desktop.h"

#include "linux/x11/Xkb.h"
#include "platform/Call.h"

#include <algorithm>
#include <array>
#include <utility>

#include <sys/socket.h>

namespace x11 {

namespace {

void selectKeyboardEvents(const Connection& connection)
{
    if (!connection.extensions().xkb) {
        return;
    }
    constexpr std::uint16_t EVENTS = XCB_XKB_EVENT_TYPE_STATE_NOTIFY |
                                     XCB_XKB_EVENT_TYPE_MAP_NOTIFY |
                                     XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY;
    constexpr std::uint16_t MAP_PARTS = XCB_XKB_MAP_PART_KEY_SYMS | XCB_XKB_MAP_PART_MODIFIER_MAP;
    xcb_xkb_select_events(
        connection.get(), XCB_XKB_ID_USE_CORE_KBD, EVENTS, 0, EVENTS, MAP_PARTS, MAP_PARTS, nullptr
    );
}

} // namespace

X11Desktop::X11Desktop(
    std::unique_ptr<Connection> connection,
    platform::DispatchQueues& queues,
    platform::Report report
)
    : display(std::move(connection)),
      queues(queues),
      report(std::move(report)),
      names(*display)
{
    display->selectEvents(
        display->root(),
        XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY |
            XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY
    );
    selectKeyboardEvents(*display);
    display->flush();
    thread = std::thread([this] { run(); });
}

X11Desktop::~X11Desktop()
{
    stopping = true;
    // Ends the reading thread's wait whatever the server does.
    shutdown(xcb_get_file_descriptor(display->get()), SHUT_RDWR);
    thread.join();
}

X11Desktop::Subscription X11Desktop::subscribe(Listener listener)
{
    auto subscription = std::make_shared<const Listener>(std::move(listener));
    listeners.push_back(subscription);
    return subscription;
}

void X11Desktop::run()
{
    while (!display->broken()) {
        auto batch = std::make_shared<Batch>(waitForEvents());
        if (!batch->empty()) {
            deliverLater(std::move(batch));
        }
    }
    if (!stopping) {
        report("the connection to the X display is lost");
        announceLoss();
    }
}

void X11Desktop::announceLoss()
{
    queues.asyncMain(lifetime.guard([this] { platform::call(onLost); }));
}

void X11Desktop::deliverLater(std::shared_ptr<Batch> batch)
{
    queues.asyncMain(lifetime.guard([this, batch = std::move(batch)] { deliver(*batch); }));
}

X11Desktop::Batch X11Desktop::waitForEvents() const
{
    Batch batch;
    // Not by the descriptor: an event may come in beside a reply that another thread waits for.
    takeIfOfInterest(Event(xcb_wait_for_event(display->get())), batch);
    while (Event event = display->nextEvent()) {
        takeIfOfInterest(std::move(event), batch);
    }
    return batch;
}

void X11Desktop::takeIfOfInterest(Event event, Batch& batch) const
{
    if (event && isOfInterest(*event)) {
        batch.push_back(std::move(event));
    }
}

bool X11Desktop::isOfInterest(const xcb_generic_event_t& event) const
{
    switch (typeOf(event)) {
    case XCB_MAP_NOTIFY:
    case XCB_UNMAP_NOTIFY:
    case XCB_DESTROY_NOTIFY:
    case XCB_FOCUS_IN:
    case XCB_FOCUS_OUT:
    case XCB_MAPPING_NOTIFY:
    case XCB_BUTTON_PRESS:
    case XCB_ENTER_NOTIFY:
    case XCB_LEAVE_NOTIFY:
    case XCB_MOTION_NOTIFY:
    case XCB_EXPOSE:
    case XCB_CLIENT_MESSAGE:
    case XCB_GE_GENERIC:
        return true;
    case XCB_CONFIGURE_NOTIFY: {
        const auto& configured = as<xcb_configure_notify_event_t>(event);
        return configured.event == configured.window; // not all that move on the root
    }
    case XCB_REPARENT_NOTIFY: {
        const auto& reparented = as<xcb_reparent_notify_event_t>(event);
        return reparented.event == reparented.window;
    }
    case XCB_PROPERTY_NOTIFY: {
        const xcb_atom_t atom = as<xcb_property_notify_event_t>(event).atom;
        const std::array<xcb_atom_t, 9> wanted{
            XCB_ATOM_WM_CLASS,
            names.gtkApplicationId,
            names.kdeDesktopFile,
            names.activeWindow,
            names.clientList,
            names.supportingWmCheck,
            names.windowType,
            names.serverTime,
            names.xkbRulesNames};
        return std::find(wanted.begin(), wanted.end(), atom) != wanted.end();
    }
    default:
        return display->extensions().isRandrEvent(typeOf(event)) ||
               (display->extensions().xkb && typeOf(event) == display->extensions().xkbEvent);
    }
}

void X11Desktop::deliver(const Batch& batch)
{
    listeners.remove_if([](const auto& listener) { return listener.expired(); });
    const auto current = listeners; // a listener may subscribe another one
    const auto tell = [](const std::weak_ptr<const Listener>& entry, const Event& event) {
        if (const Subscription listener = entry.lock()) {
            (*listener)(*event);
        }
    };
    for (const Event& event : batch) {
        for (const auto& entry : current) {
            tell(entry, event);
        }
    }
}

} // namespace x11
