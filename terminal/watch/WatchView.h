#pragma once

#include "terminal/trade/RecordView.h"
#include "terminal/watch/WatchTable.h"

namespace Terminal {

/// The rows of the watch list. Enter or a double click asks for a security's chart; Delete, or the menu of a
/// row, takes it off the list.
class WatchView : public RecordView
{
    Q_OBJECT

public:
    /// `watched` must outlive the view.
    explicit WatchView(WatchTable *watched);

Q_SIGNALS:
    void chartAsked(const QString &code);
    void removalAsked(const QString &code);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void openMenu(const QPoint &place);

    WatchTable *m_watched;
};

} // namespace Terminal
