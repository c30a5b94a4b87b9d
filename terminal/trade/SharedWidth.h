#pragma once

#include <QSplitter>

#include <vector>

namespace Terminal {

class RecordView;

/// Two tables side by side with a caption each. Until the user shares the width out between them, each has
/// what its columns need.
class SharedWidth : public QSplitter
{
    Q_OBJECT

public:
    SharedWidth();

    /// The next table from the left; all are owned by the splitter then.
    void add(QWidget *caption, RecordView *table);

    /// To be called when columns may need another width. The tables stay as they are while both are wide
    /// enough: they would move with every new figure.
    void shareByNeed();

    /// How the user has shared the width out, for a later run; empty until then.
    QByteArray sharing() const;
    /// Shares the width as it was; changes nothing when the bytes are of no such pair.
    void restoreSharing(const QByteArray &sharing);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    std::vector<RecordView *> m_tables;
    bool m_isSharedByHand = false;
};

} // namespace Terminal
