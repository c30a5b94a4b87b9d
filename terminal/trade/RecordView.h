#pragma once

#include <QTableView>

namespace Terminal {

/// A table of records in the panel: whole rows, no grid, columns as wide as their texts. One of them takes
/// the room that the others leave; where there is too little, it is cut and shown by tool tips.
class RecordView : public QTableView
{
    Q_OBJECT

public:
    /// `model` must outlive the view.
    RecordView(QAbstractItemModel *model, int widestColumn);

    /// The width at which no column is cut.
    int neededWidth() const;
};

} // namespace Terminal
