#include "accessibility/TextWatch.h"

#include "accessibility/EventSource.h"

namespace accessibility {

TextWatch::TextWatch(const std::string& busAddress)
    : told(std::make_unique<std::vector<Change>>()),
      bus(listenTo(
          busAddress,
          {.name = "object:text-changed",
           .match = "type='signal',interface='org.a11y.atspi.Event.Object',member='TextChanged'"},
          noticed,
          told.get()
      ))
{
}

const std::vector<TextWatch::Change>& TextWatch::changes()
{
    readEvents(bus);
    return *told;
}

int TextWatch::noticed(sd_bus_message* message, void* changes, sd_bus_error* /*error*/)
{
    const char* kind = nullptr;
    const char* text = nullptr;
    if (sd_bus_message_read(message, "siiv", &kind, nullptr, nullptr, "s", &text) >= 0) {
        static_cast<std::vector<Change>*>(changes)->push_back({kind, text});
    }
    return 0;
}

} // namespace accessibility
