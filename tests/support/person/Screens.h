// How the windows of the agent and the things in them are called.
#pragma once

#include "person/Control.h"

namespace person::screens {

inline constexpr auto GREETING = "Welcome to Tarvel";
inline constexpr auto PASSWORD_WINDOW = "Tarvel Password";
inline constexpr auto POPOVER = "Tarvel";
inline constexpr auto PICKER = "Choose applications to protect";
inline constexpr auto PICKER_TITLE = "Choose Applications"; // for the eye
inline constexpr auto HELP = "Tarvel Help";

inline const person::Control NEW_PASSWORD = person::passwordField("New password");
inline const person::Control CONFIRMATION = person::passwordField("Repeat the new password");
inline const person::Control CONFIRM = person::button("Confirm");
inline const person::Control CANCEL = person::button("Cancel");

inline const person::Control GATE = person::passwordField("Password", POPOVER);
inline const person::Control UNLOCK = person::button("Unlock", POPOVER);
inline const person::Control NO_PASSWORD = person::label("No password yet", POPOVER);
inline const person::Control CONTENT = person::label("Protected Applications", POPOVER);
inline const person::Control NOTHING_PROTECTED = person::label("Nothing is protected yet", POPOVER);
inline const person::Control ADD = person::button("Protect more applications", POPOVER);
inline const person::Control OPTIONS = person::button("Options", POPOVER);
inline const person::Control ACTIVE = person::checkBox("Protection is active");
inline const person::Control START_AT_LOGIN = person::checkBox("Start at login");

inline const person::Control CHANGE_PASSWORD = person::menuItem("Password Preferences");
inline const person::Control LOCK_OTHERS = person::menuItem("Lock Other Applications");
inline const person::Control HELP_AND_SUPPORT = person::menuItem("Help & Support");
inline const person::Control QUIT = person::menuItem("Quit");

inline const person::Control FILTER = person::field("Filter applications by name");
inline const person::Control OFFERED = person::list("Applications");
inline const person::Control CLEAR_FILTER = person::button("Clear the filter");
inline const person::Control RUNNING_ONLY = person::checkBox("List Running Applications Only");
inline const person::Control ADMINISTRATIVE = person::checkBox("Lock administrative applications");
inline const person::Control ABOUT_RUNNING_ONLY =
    person::button("About “List Running Applications Only”");
inline const person::Control ABOUT_ADMINISTRATIVE =
    person::button("About “Lock administrative applications”");

inline const person::Control HELP_PAGE = person::label("Help page", HELP);

inline const person::Control ALERT_BUTTON = person::button("OK");

} // namespace person::screens
