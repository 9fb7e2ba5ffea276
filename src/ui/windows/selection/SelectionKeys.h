// The keys that lead from the picker's filter into its list and back: down into the list, up from
// its first row, and what is typed on a row goes on in the filter. Main thread only.
#pragma once

#include "ui/views/TableView.h"
#include "ui/views/TextField.h"

namespace ui {

class SelectionKeys
{
public:
    /// Listens to the keys of both. They and this live and end together.
    SelectionKeys(TextField& filter, TableView& list);

private:
    bool isKeyOfFilterUsed(const QKeyEvent& event) const;
    bool isKeyOfListUsed(const QKeyEvent& event) const;

    TextField& filter;
    TableView& list;
};

} // namespace ui
