#pragma once

#include <QWidget>

class QComboBox;
class QLabel;
class QPushButton;

namespace Terminal {

/// Which orders a list has.
enum class OrderScope {
    Shown,  ///< those of the shown security and day
    Working ///< those of all securities that may still be dealt
};

/// The line above the list of orders: its caption, the filter, and what cancels several.
class OrdersBar : public QWidget
{
    Q_OBJECT

public:
    explicit OrdersBar(QWidget *parent = nullptr);

    void setCaption(const QString &caption);
    /// Whether the orders of all securities are known; else those of the shown one stay chosen.
    void setKnowsWorking(bool isKnown);
    /// How many of the selected orders, and of the listed ones, can be cancelled.
    void setCancellable(size_t ofSelected, size_t ofAll);
    void showTexts();

    OrderScope scope() const;
    /// Chooses as a user would.
    void setScope(OrderScope scope);

Q_SIGNALS:
    void scopeChosen();
    void cancelSelectedAsked();
    void cancelAllAsked();

private:
    QLabel *m_caption;
    QComboBox *m_scope;
    QPushButton *m_selected;
    QPushButton *m_all;
};

} // namespace Terminal
