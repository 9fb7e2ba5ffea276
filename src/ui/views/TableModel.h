// The rows of a table as the toolkit asks for them.
#pragma once

#include <QAbstractListModel>

#include <functional>

namespace ui {

class TableModel : public QAbstractListModel
{
    Q_OBJECT

public:
    std::function<QString(int row)> titleOfRow;

    /// Begins anew with that many rows.
    void reset(int rowCount);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    int count = 0;
};

} // namespace ui
