#pragma once

#include <QWidget>

#include <vector>

class QSplitter;
class QTabBar;

namespace Terminal {

class RecordView;

/// Tables with captions side by side. Until the user shares the width out, each has what its columns need;
/// where there is too little for all of them, tabs show one at a time.
class SharedWidth : public QWidget
{
    Q_OBJECT

public:
    explicit SharedWidth(QWidget *parent = nullptr);

    /// Adds a table right of the others. To be called once for each.
    void add(QWidget *caption, RecordView *table);

    /// The name of the table that was added as this one, on its tab.
    void setTitle(int number, const QString &title);

    /// To be called when tables have other texts.
    void shareByNeed();

    /// Brings a table to the front, where only one is shown.
    void bringUp(const RecordView *table);

    /// How the user shared the width out; empty when not.
    QByteArray sharing() const;
    void restoreSharing(const QByteArray &sharing);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void showOneOrAll(bool showsOne);

    QTabBar *m_tabs;
    QSplitter *m_splitter;
    std::vector<RecordView *> m_tables;
    bool m_isSharedByHand = false;
};

} // namespace Terminal
