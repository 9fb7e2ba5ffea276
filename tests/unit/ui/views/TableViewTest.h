// A table of named rows below a field that has the focus.
#pragma once

#include "ui/views/ElidedLabel.h"
#include "ui/views/ImageButtonView.h"
#include "ui/views/TableView.h"

#include <QCoreApplication>
#include <QLineEdit>
#include <QVBoxLayout>

#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

class TableViewTest : public testing::Test
{
protected:
    TableViewTest()
    {
        auto* const layout = new QVBoxLayout(&window);
        layout->addWidget(other);
        layout->addWidget(table);
        other->setFocus();
        table->numberOfRows = [this] { return static_cast<int>(names.size()); };
        table->titleOfRow = [this](int row) { return QString::fromStdString(nameOf(row)); };
        table->fillCell = [this](int row, ui::MyCell& cell) { fill(row, cell); };
        table->onSelect = [this](int row) { selected.push_back(nameOf(row)); };
        table->onDelete = [this](int row) { deleted.push_back(nameOf(row)); };
    }

    std::string nameOf(int row) const { return names.at(static_cast<std::size_t>(row)); }

    void fill(int row, ui::MyCell& cell)
    {
        made.insert(&cell);
        cell.control<ui::ElidedLabel>(ui::MyCell::NAME_TAG)
            .setText(QString::fromStdString(nameOf(row)));
        auto& button = cell.control<ui::ImageButtonView>(ui::MyCell::BUTTON_TAG);
        button.initiate(row, false);
        button.onClick = [this](int id) { pressed.push_back(nameOf(id)); };
    }

    void show(int rows, const QSize& size = QSize(320, 240))
    {
        setRows(rows);
        table->reloadData();
        window.resize(size);
        window.show();
        QCoreApplication::processEvents();
    }

    void setRows(int rows)
    {
        names.clear();
        for (int row = 0; row < rows; ++row) {
            names.push_back("Name " + std::to_string(row));
        }
    }

    std::string shownName(int row) const
    {
        const ui::MyCell* const cell = table->cellAt(row);
        return cell == nullptr
                   ? "no cell"
                   : cell->control<ui::ElidedLabel>(ui::MyCell::NAME_TAG).text().toStdString();
    }

    bool isCoveredByItsCell(int row) const
    {
        const ui::MyCell* const cell = table->cellAt(row);
        return cell != nullptr && cell->isVisible() &&
               cell->geometry() == table->visualRect(table->model()->index(row, 0));
    }

    using Names = std::vector<std::string>;

    QWidget window;
    QLineEdit* other = new QLineEdit(&window);
    ui::TableView* table = new ui::TableView(&window);
    Names names;
    Names selected;
    Names deleted;
    Names pressed;
    std::set<ui::MyCell*> made;
};
