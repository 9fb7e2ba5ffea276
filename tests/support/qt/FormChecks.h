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

/// The labels, buttons and check boxes on the screen that have less room than their text needs.
std::vector<std::string> cutTextsOf(const QWidget& window);

/// The controls on the screen that are not wholly in the window, or that lie upon one another.
std::vector<std::string> misplacedIn(QWidget& window);

/// The controls that Tab reaches only after one that is wholly below them.
std::vector<std::string> tabJumpsOf(QWidget& window);

/// Makes the texts of its labels and buttons 40 % longer, as in a wordy language.
void lengthenTexts(QWidget& window);

} // namespace support
