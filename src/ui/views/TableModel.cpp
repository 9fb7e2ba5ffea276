#include "ui/views/TableModel.h"

namespace ui {

void TableModel::reset(int rowCount)
{
    beginResetModel();
    count = rowCount;
    endResetModel();
}

int TableModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : count;
}

QVariant TableModel::data(const QModelIndex& index, int role) const
{
    if ((role == Qt::DisplayRole || role == Qt::AccessibleTextRole) && titleOfRow) {
        return titleOfRow(index.row());
    }
    return {};
}

Qt::ItemFlags TableModel::flags(const QModelIndex& index) const
{
    return index.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren
                           : Qt::NoItemFlags;
}

} // namespace ui
