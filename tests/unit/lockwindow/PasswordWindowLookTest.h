// The lock window as a user sees it.
#pragma once

#include "LockWindowTest.h"

#include <QColor>
#include <QImage>

#include <cstdlib>
#include <string>
#include <vector>

class PasswordWindowLook : public LockWindowTest
{
protected:
    [[nodiscard]] QImage picture() const { return window().grab().toImage(); }

    [[nodiscard]] QColor ground() const
    {
        const QRect field = place("passwordFieldOutlet");
        return picture().pixelColor(field.right() - 12, field.center().y());
    }

    [[nodiscard]] QColor textColor(const char* name) const
    {
        return outlet(name).palette().color(QPalette::WindowText);
    }

    [[nodiscard]] std::string misplaced() const
    {
        int above = 0;
        for (const char* name : CONTROLS) {
            const QRect where = place(name);
            if (!window().rect().contains(where)) {
                return std::string(name) + " is cut off";
            }
            if (where.top() < above) {
                return std::string(name) + " overlaps the one above";
            }
            if (std::abs(where.center().x() - window().rect().center().x()) > 1) {
                return std::string(name) + " is not centred";
            }
            above = where.bottom();
        }
        return "";
    }

    static inline const std::vector<const char*> CONTROLS{
        "appIconOutlet",
        "appNameLabelOutlet",
        "passwordFieldOutlet",
        "keyboardView",
        "errorMessageLabelOutlet"};
    static inline const QColor LOCK{65, 68, 75};
};
