// What a person looks for on the screen: its kind, its name, and the window that it is in where
// several windows show something of that kind and name.
#pragma once

#include "accessibility/Role.h"

#include <optional>
#include <string>

namespace person {

struct Control
{
    std::optional<accessibility::Role> role; // none means a window itself
    std::string name;
    std::string window; // the window's name; empty means any
};

/// A window itself, of whatever kind.
inline Control window(const std::string& name)
{
    return {.role = {}, .name = name, .window = name};
}

inline Control button(const std::string& name, const std::string& window = {})
{
    return {.role = accessibility::Role::PushButton, .name = name, .window = window};
}

inline Control checkBox(const std::string& name)
{
    return {.role = accessibility::Role::CheckBox, .name = name};
}

inline Control label(const std::string& text, const std::string& window = {})
{
    return {.role = accessibility::Role::Label, .name = text, .window = window};
}

inline Control passwordField(const std::string& name, const std::string& window = {})
{
    return {.role = accessibility::Role::PasswordText, .name = name, .window = window};
}

inline Control field(const std::string& name)
{
    return {.role = accessibility::Role::Text, .name = name};
}

inline Control list(const std::string& name)
{
    return {.role = accessibility::Role::List, .name = name};
}

inline Control row(const std::string& name, const std::string& window = {})
{
    return {.role = accessibility::Role::ListItem, .name = name, .window = window};
}

inline Control menuItem(const std::string& name)
{
    return {.role = accessibility::Role::MenuItem, .name = name};
}

} // namespace person
