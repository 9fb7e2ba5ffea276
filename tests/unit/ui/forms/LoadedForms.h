// Every form of the interface as its controller loads it, with something in it.
#pragma once

#include <QWidget>

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

/// A form on the screen. It goes with this.
class LoadedForm
{
public:
    LoadedForm() = default;
    LoadedForm(const LoadedForm&) = delete;
    LoadedForm& operator=(const LoadedForm&) = delete;
    LoadedForm(LoadedForm&&) = delete;
    LoadedForm& operator=(LoadedForm&&) = delete;
    virtual ~LoadedForm() = default;

    /// What was made from the form.
    virtual QWidget& form() = 0;

    /// Shows it in a window as the program does, and gives the window.
    virtual QWidget& show() = 0;
};

struct FormCase
{
    std::string title;
    std::string file; // below src/ui
    std::vector<std::string> outlets;
    std::function<std::unique_ptr<LoadedForm>()> load;
};

inline std::ostream& operator<<(std::ostream& stream, const FormCase& form)
{
    return stream << form.title;
}

const std::vector<FormCase>& allForms();
