#pragma once

#include "terminal/trade/RecordView.h"
#include "terminal/trade/TradeTables.h"

namespace Terminal {

/// The rows of positions. Enter or a double click asks for a position's chart, F5 for its trades; its menu
/// for both, and, as Delete does, for what is needed to close it.
class PositionsView : public RecordView
{
    Q_OBJECT

public:
    /// `positions` must outlive the view.
    explicit PositionsView(PositionsTable *positions);

Q_SIGNALS:
    void chartAsked(const Security &security);
    void tradesAsked(const Security &security);
    /// The user wants to sell what can be sold of it, which is something.
    void closeAsked(const Position &position);

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void openMenu(const QPoint &place);
    void askToClose(const Position &position);

    PositionsTable *m_positions;
};

} // namespace Terminal
