#include "accessibility/Node.h"

#include "desktop/Failure.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <utility>

namespace accessibility {

namespace {

constexpr auto ACCESSIBLE = "org.a11y.atspi.Accessible";
constexpr auto COMPONENT = "org.a11y.atspi.Component";
constexpr auto ACTION = "org.a11y.atspi.Action";
constexpr auto TEXT = "org.a11y.atspi.Text";
constexpr auto PROPERTIES = "org.freedesktop.DBus.Properties";

constexpr unsigned BITS_PER_WORD = 32;
constexpr std::uint32_t OF_THE_SCREEN = 0;

void nothing(sd_bus_message* /*message*/) {}

void require(int result, const std::string& what)
{
    if (result < 0) {
        throw desktop::Failure("accessibility: no " + what + " in the answer");
    }
}

std::string readText(sd_bus_message* answer, const char* signature)
{
    const char* text = nullptr;
    const bool isWrapped = signature[0] == 'v';
    require(
        isWrapped ? sd_bus_message_read(answer, "v", "s", &text)
                  : sd_bus_message_read(answer, "s", &text),
        "text"
    );
    return text;
}

} // namespace

Node::Node(Bus bus, std::string peer, std::string path)
    : bus(std::move(bus)),
      peer(std::move(peer)),
      path(std::move(path))
{
}

std::string Node::name() const
{
    std::string text;
    property(ACCESSIBLE, "Name", [&text](sd_bus_message* answer) { text = readText(answer, "v"); });
    return text;
}

std::string Node::description() const
{
    std::string text;
    property(ACCESSIBLE, "Description", [&text](sd_bus_message* answer) {
        text = readText(answer, "v");
    });
    return text;
}

bool Node::is(Role role) const
{
    std::uint32_t number = 0;
    call(ACCESSIBLE, "GetRole", nothing, [&number](sd_bus_message* answer) {
        require(sd_bus_message_read(answer, "u", &number), "role");
    });
    return number == static_cast<std::uint32_t>(role);
}

std::string Node::roleName() const
{
    std::string role;
    call(ACCESSIBLE, "GetRoleName", nothing, [&role](sd_bus_message* answer) {
        role = readText(answer, "s");
    });
    return role;
}

bool Node::is(State state) const
{
    std::array<std::uint32_t, 2> words{};
    call(ACCESSIBLE, "GetState", nothing, [&words](sd_bus_message* answer) {
        require(sd_bus_message_enter_container(answer, 'a', "u"), "states");
        for (std::uint32_t& word : words) {
            require(sd_bus_message_read(answer, "u", &word), "state");
        }
    });
    const auto number = static_cast<unsigned>(state);
    return ((words.at(number / BITS_PER_WORD) >> (number % BITS_PER_WORD)) & 1U) != 0;
}

std::vector<Node> Node::children() const
{
    std::vector<Node> found;
    call(ACCESSIBLE, "GetChildren", nothing, [this, &found](sd_bus_message* answer) {
        require(sd_bus_message_enter_container(answer, 'a', "(so)"), "children");
        const char* name = nullptr;
        const char* object = nullptr;
        while (sd_bus_message_read(answer, "(so)", &name, &object) > 0) {
            found.emplace_back(bus, name, object);
        }
    });
    return found;
}

Node Node::parent() const
{
    std::string name;
    std::string object;
    property(ACCESSIBLE, "Parent", [&](sd_bus_message* answer) {
        const char* nameText = nullptr;
        const char* objectText = nullptr;
        require(sd_bus_message_read(answer, "v", "(so)", &nameText, &objectText), "parent");
        name = nameText;
        object = objectText;
    });
    return {bus, name, object};
}

desktop::Rectangle Node::place() const
{
    std::int32_t x = 0;
    std::int32_t y = 0;
    std::int32_t width = 0;
    std::int32_t height = 0;
    call(
        COMPONENT,
        "GetExtents",
        [](sd_bus_message* question) {
            require(sd_bus_message_append(question, "u", OF_THE_SCREEN), "room");
        },
        [&](sd_bus_message* answer) {
            require(sd_bus_message_read(answer, "(iiii)", &x, &y, &width, &height), "place");
        }
    );
    return {
        static_cast<std::int16_t>(x),
        static_cast<std::int16_t>(y),
        static_cast<std::uint16_t>(width),
        static_cast<std::uint16_t>(height)};
}

std::string Node::text() const
{
    std::string text;
    call(
        TEXT,
        "GetText",
        [](sd_bus_message* question) {
            require(sd_bus_message_append(question, "ii", 0, -1), "room");
        },
        [&text](sd_bus_message* answer) { text = readText(answer, "s"); }
    );
    return text;
}

std::size_t Node::characters() const
{
    std::int32_t count = 0;
    property(TEXT, "CharacterCount", [&count](sd_bus_message* answer) {
        require(sd_bus_message_read(answer, "v", "i", &count), "number");
    });
    return static_cast<std::size_t>(count);
}

void Node::act() const
{
    int done = 0;
    call(
        ACTION,
        "DoAction",
        [](sd_bus_message* question) { require(sd_bus_message_append(question, "i", 0), "room"); },
        [&done](sd_bus_message* answer) {
            require(sd_bus_message_read(answer, "b", &done), "verdict");
        }
    );
    if (done == 0) {
        throw desktop::Failure(
            "accessibility: " + roleName() + " \"" + name() + "\" has no action"
        );
    }
}

bool Node::takeFocus() const
{
    int taken = 0;
    call(COMPONENT, "GrabFocus", nothing, [&taken](sd_bus_message* answer) {
        require(sd_bus_message_read(answer, "b", &taken), "verdict");
    });
    return taken != 0;
}

void Node::call(
    const std::string& interface, const std::string& member, const Writer& write, const Reader& read
) const
{
    const auto question = desktop::newCall(*bus, peer, path, interface, member);
    write(question.get());
    read(desktop::callAndWait(*bus, question).get());
}

void Node::property(const std::string& interface, const std::string& name, const Reader& read) const
{
    call(
        PROPERTIES,
        "Get",
        [&](sd_bus_message* question) {
            require(sd_bus_message_append(question, "ss", interface.c_str(), name.c_str()), "room");
        },
        read
    );
}

} // namespace accessibility
