// The window of the picker with a list that the test gives it, on the toolkit's offscreen platform.
#pragma once

#include "fakes/FakePlatform.h"
#include "qt/Input.h"
#include "ui/views/ElidedLabel.h"
#include "ui/views/ImageView.h"
#include "ui/windows/selection/ApplicationsSelectWindowController.h"

#include <QApplication>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

using Names = std::vector<std::string>;

class SelectionWindowTest : public testing::Test
{
protected:
    using Controller = ui::ApplicationsSelectWindowController;

    SelectionWindowTest()
    {
        controller.onApplicationSelected = [this](const applications::ApplicationEntityPtr& chosen
                                           ) { selected.push_back(chosen->bundleIdentifier); };
    }

    static applications::ApplicationEntityPtr
    entity(const std::string& name, const std::string& identifier)
    {
        return std::make_shared<applications::ApplicationEntity>(name, identifier, nullptr);
    }

    /// Each named as given, with the identifier "id NAME".
    static Controller::Applications entities(const Names& names)
    {
        Controller::Applications list;
        for (const std::string& name : names) {
            list.push_back(entity(name, "id " + name));
        }
        return list;
    }

    void show(const Names& names)
    {
        controller.showServiceWindow({}, true, false);
        controller.displayApplicationsList(entities(names));
        settle();
    }

    static void settle() { QCoreApplication::processEvents(); }

    ui::TextField& field() { return *controller.filterTextfieldOutlet; }

    ui::TableView& table() { return *controller.applicationsTableViewOutlet; }

    template <typename Control> Control& control(const char* name)
    {
        auto* const found = controller.window().findChild<Control*>(name);
        EXPECT_NE(found, nullptr) << name;
        return *found;
    }

    ui::MyCell& cell(int row)
    {
        ui::MyCell* const found = table().cellAt(row);
        EXPECT_NE(found, nullptr) << row;
        return *found;
    }

    /// As the user does it.
    void filter(const QString& text)
    {
        field().setFocus();
        field().clear();
        support::type(controller.window(), text);
        settle();
    }

    Names rows() const
    {
        Names names;
        for (const applications::ApplicationEntityPtr& row :
             controller.filteredApplicationEntities) {
            names.push_back(row->name);
        }
        return names;
    }

    /// What the list itself shows.
    Names shownRows()
    {
        Names names;
        for (int row = 0; row < table().model()->rowCount(); ++row) {
            names.push_back(
                cell(row).control<ui::ElidedLabel>(ui::MyCell::NAME_TAG).text().toStdString()
            );
        }
        return names;
    }

    fakes::FakePlatform fake;
    Controller controller;
    Names selected; // identifiers
};
