// What holds for every form, whatever it shows.
#pragma once

#include <string>
#include <vector>

class QWidget;

namespace support {

/// What is wrong with the form in the file: widgets with a name that the designer made up or with
/// none, widgets that assistive tools could not name, controls named twice.
std::vector<std::string> troublesOfForm(const std::string& path);

/// What is wrong with the window made from it: controls that take the focus and have no accessible
/// name, or that Tab does not reach from the first of them.
std::vector<std::string> troublesOfWindow(QWidget& window);

} // namespace support
