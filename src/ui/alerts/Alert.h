// An alert as the toolkit shows it. Main thread only.
#pragma once

#include <QMessageBox>

#include <memory>
#include <string>
#include <vector>

namespace ui {

/// Response code of the first button; the following ones count up from it.
inline constexpr int ALERT_FIRST_BUTTON_RETURN = 1000;

struct AlertTexts
{
    std::string messageText;
    std::string informativeText;
    int style = 0; // a type of `AlertMessagesService`
};

/// A message box with a button an option, the first of them the default; with the one default
/// button where there are none. All texts are shown as they are written. `window` may be empty.
std::unique_ptr<QMessageBox>
makeAlert(const AlertTexts& texts, const std::vector<std::string>& options, QWidget* window);

/// The response code of a finished alert. An alert that was dismissed answers as its last button.
int responseOf(const QMessageBox& alert);

} // namespace ui
