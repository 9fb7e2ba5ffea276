#include "LoadedForms.h"

#include "ui/popover/PopoverViewController.h"
#include "ui/views/ElidedLabel.h"
#include "ui/windows/greetings/GreetingsWindowController.h"
#include "ui/windows/help/HelpWindowController.h"
#include "ui/windows/preferences/PreferencesWindowController.h"
#include "ui/windows/selection/ApplicationsSelectWindowController.h"

#include <QVBoxLayout>

namespace {

using Entities = std::vector<applications::ApplicationEntityPtr>;
using State = ui::PopoverViewController::State;

const Entities NO_APPLICATIONS;

Entities someApplications()
{
    Entities entities;
    for (const std::string name :
         {"Calculator", "Mail", "A Name That Is Longer Than Any List of Applications Is Wide"}) {
        entities.push_back(
            std::make_shared<applications::ApplicationEntity>(name, "org.example." + name, nullptr)
        );
    }
    return entities;
}

/// A window whose size follows its content, which somebody else owns, as the popover's does.
class Frame
{
public:
    Frame() = default;
    Frame(const Frame&) = delete;
    Frame& operator=(const Frame&) = delete;
    Frame(Frame&&) = delete;
    Frame& operator=(Frame&&) = delete;

    ~Frame()
    {
        if (content != nullptr) {
            content->setParent(nullptr);
        }
    }

    QWidget& show(QWidget& wanted)
    {
        content = &wanted;
        auto* const layout = new QVBoxLayout(&window);
        layout->setSizeConstraint(QLayout::SetFixedSize);
        layout->addWidget(content);
        window.show();
        return window;
    }

private:
    QWidget window;
    QWidget* content = nullptr;
};

template <typename Controller> class LoadedWindow : public LoadedForm
{
public:
    QWidget& form() override { return controller.window(); }

    QWidget& show() override
    {
        controller.window().makeKeyAndOrderFront();
        return controller.window();
    }

    Controller controller;
};

class LoadedSelection : public LoadedWindow<ui::ApplicationsSelectWindowController>
{
public:
    explicit LoadedSelection(Entities wanted) : applications(std::move(wanted)) {}

    QWidget& show() override
    {
        controller.showServiceWindow({}, true, false);
        const bool more = applications.empty(); // an empty list says why it is empty
        controller.displayApplicationsList(applications, more);
        return controller.window();
    }

private:
    Entities applications;
};

class LoadedPopover : public LoadedForm
{
public:
    LoadedPopover(State state, Entities applications)
    {
        controller.initiateData(true, false, std::move(applications));
        controller.state = state;
    }

    QWidget& form() override
    {
        QWidget& view = controller.view();
        controller.viewWillAppear();
        switch (controller.state) {
        case State::NoPassword:
            return controller.noPasswordViewController->view();
        case State::PasswordRequired:
            return controller.requestPasswordViewController->view();
        case State::Unlocked:
            break;
        }
        return view;
    }

    QWidget& show() override
    {
        form();
        return frame.show(controller.view());
    }

private:
    ui::PopoverViewController controller;
    Frame frame;
};

class LoadedCell : public LoadedForm
{
public:
    LoadedCell()
    {
        auto& button = cell.control<ui::ImageButtonView>(ui::MyCell::BUTTON_TAG);
        button.setImageName("RemoveApplication");
        button.setAccessibleName("Stop protecting Calculator");
        cell.control<ui::ElidedLabel>(ui::MyCell::NAME_TAG).setText("Calculator");
    }

    QWidget& form() override { return cell; }

    QWidget& show() override { return frame.show(cell); }

private:
    ui::MyCell cell;
    Frame frame;
};

template <typename Form, typename... Arguments>
std::function<std::unique_ptr<LoadedForm>()> loading(Arguments... arguments)
{
    return [arguments...] { return std::make_unique<Form>(arguments...); };
}

} // namespace

const std::vector<FormCase>& allForms()
{
    static const std::vector<std::string> POPOVER_OUTLETS{
        "noItemViewOutlet",
        "applicationsTableViewOutlet",
        "tableViewScrollViewOutlet",
        "tableHeaderViewOutlet",
        "addApplicationButtonOutlet",
        "menuButtonOutlet",
        "activateApplicationCheckboxOutlet",
        "startAtLoginCheckboxOutlet",
        "activateApplicationLightOutlet",
        "startAtLoginLightOutlet"};
    static const std::vector<std::string> SELECTION_OUTLETS{
        "applicationsTableViewOutlet",
        "tableFooterViewOutlet",
        "lockAdministrativeApplicationsCheckboxOutlet",
        "showRunningApplicationsOnlyCheckboxOutlet",
        "filterTextfieldOutlet",
        "blurSearchTextfieldButtonOutlet",
        "filterFieldBackgroundViewOutlet"};
    static const std::vector<FormCase> FORMS{
        {"Greetings",
         "windows/greetings/GreetingsWindow.ui",
         {"lineViewOutlet"},
         loading<LoadedWindow<ui::GreetingsWindowController>>()},
        {"Help",
         "windows/help/HelpWindow.ui",
         {"webviewOutlet"},
         loading<LoadedWindow<ui::HelpWindowController>>()},
        {"Preferences",
         "windows/preferences/PreferencesWindow.ui",
         {"lineViewOutlet", "passwordTextFieldOutlet", "confirmPasswordTextFieldOutlet"},
         loading<LoadedWindow<ui::PreferencesWindowController>>()},
        {"SelectionOfSome",
         "windows/selection/ApplicationsSelectWindow.ui",
         SELECTION_OUTLETS,
         loading<LoadedSelection>(someApplications())},
        {"SelectionOfNone",
         "windows/selection/ApplicationsSelectWindow.ui",
         SELECTION_OUTLETS,
         loading<LoadedSelection>(NO_APPLICATIONS)},
        {"PopoverWithAList",
         "popover/PopoverView.ui",
         POPOVER_OUTLETS,
         loading<LoadedPopover>(State::Unlocked, someApplications())},
        {"PopoverWithoutAList",
         "popover/PopoverView.ui",
         POPOVER_OUTLETS,
         loading<LoadedPopover>(State::Unlocked, NO_APPLICATIONS)},
        {"PopoverWithoutAPassword",
         "popover/NoPasswordView.ui",
         {},
         loading<LoadedPopover>(State::NoPassword, someApplications())},
        {"PopoverAskingForThePassword",
         "popover/RequestPasswordView.ui",
         {"passwordTextFieldOutlet", "centralViewOutlet"},
         loading<LoadedPopover>(State::PasswordRequired, someApplications())},
        {"Cell", "views/MyCell.ui", {}, loading<LoadedCell>()},
    };
    return FORMS;
}
