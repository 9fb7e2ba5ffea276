// The presenter of the picker on a desktop in memory with three installed applications: Calculator,
// notes and Zeta.
#pragma once

#include "fakes/Applications.h"
#include "fakes/FakePlatform.h"
#include "storage/ConfigurationAndPreferencesService.h"
#include "ui/windows/selection/SelectApplicationsWindowPresenter.h"

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

class SelectionPresenter : public testing::Test
{
protected:
    using Names = std::vector<std::string>;

    SelectionPresenter()
    {
        fake.fileManager.folders["/Applications"] = {};
        install("org.Calculator", "Calculator");
        install("org.Notes", "notes");
        install("org.Zeta", "Zeta");
    }

    void install(const std::string& identifier, const std::string& name)
    {
        fakes::installApplication(fake, identifier, name);
        fake.fileManager.folders["/Applications"].insert(
            fake.fileManager.folders["/Applications"].begin(), identifier + ".app"
        );
    }

    void installAdministrative()
    {
        install("com.apple.Terminal", "Terminal");
        install("com.apple.ActivityMonitor", "Activity Monitor");
        install("com.apple.keychainaccess", "Keychain Access");
    }

    void start()
    {
        presenter->startService();
        settle();
    }

    void settle() { fake.dispatchQueues.runAll(); }

    ui::ApplicationsSelectWindowController& controller()
    {
        return *presenter->applicationsSelectWindowController;
    }

    Names rows()
    {
        Names names;
        for (const applications::ApplicationEntityPtr& row :
             controller().filteredApplicationEntities) {
            names.push_back(row->name);
        }
        return names;
    }

    void choose(const std::string& name)
    {
        const Names names = rows();
        const auto found = std::find(names.begin(), names.end(), name);
        ASSERT_NE(found, names.end()) << name;
        controller().applicationsTableViewOutlet->onSelect(static_cast<int>(found - names.begin()));
    }

    void setRunningOnly(bool isOn)
    {
        if (controller().showRunningApplicationsOnlyCheckboxOutlet->isChecked() != isOn) {
            controller().showRunningApplicationsOnlyCheckboxOutlet->click();
        }
        settle();
    }

    void launch(const platform::RunningApplication& application)
    {
        fake.workspace.startLaunching(application);
        fake.workspace.finishLaunching(application);
    }

    int countOf(const std::string& call) const
    {
        return static_cast<int>(std::count(fake.calls.begin(), fake.calls.end(), call));
    }

    static storage::ConfigurationAndPreferencesService& settings()
    {
        return storage::ConfigurationAndPreferencesService::sharedInstance();
    }

    fakes::FakePlatform fake;
    std::unique_ptr<ui::SelectApplicationsWindowPresenter> presenter =
        std::make_unique<ui::SelectApplicationsWindowPresenter>();
};
