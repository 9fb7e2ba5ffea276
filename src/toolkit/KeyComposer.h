// Puts dead keys and Compose sequences together for one field, with no input method in between:
// which of those runs, and whether, changes from one session to the next, and what a password was
// set with must come out again. Main thread.
#pragma once

#include <QString>

#include <cstdint>
#include <memory>
#include <optional>

struct xkb_compose_state;

namespace toolkit {

class ComposeTable;

class KeyComposer
{
public:
    /// With the table of this process's locale, which is read when it is needed.
    KeyComposer();

    /// The table must outlive this.
    explicit KeyComposer(const ComposeTable& table);

    ~KeyComposer();
    KeyComposer(const KeyComposer&) = delete;
    KeyComposer& operator=(const KeyComposer&) = delete;
    KeyComposer(KeyComposer&&) = delete;
    KeyComposer& operator=(KeyComposer&&) = delete;

    /// What becomes of a key that is pressed, given its symbol (keysym): nothing when the key is to
    /// be handled as usual, else the text that it completes, empty while more keys are to come.
    std::optional<QString> press(std::uint32_t keySymbol);

    /// Forgets the keys that wait for more.
    void reset();

private:
    struct Release
    {
        void operator()(xkb_compose_state* state) const;
    };

    bool prepared();
    QString text() const;

    const ComposeTable* table = nullptr;
    std::unique_ptr<xkb_compose_state, Release> state; // null without a table
};

} // namespace toolkit
