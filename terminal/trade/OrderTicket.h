#pragma once

#include "terminal/trade/OrderDraft.h"

#include <QWidget>

#include <optional>

class QLabel;
class QPushButton;

namespace Terminal {

class PriceBox;
class QuantityBox;
class OrderResults;
class ShrinkingArea;
class PartButtons;

/// The form of a limit order: side, price, quantity and what it comes to. It says what speaks against
/// sending the order; while nothing does, Enter in a field or the button sends it.
class OrderTicket : public QWidget
{
    Q_OBJECT

public:
    explicit OrderTicket(QWidget *parent = nullptr);

    /// Another security begins with a lot at `price`, its last one, or without a price where there is none to
    /// offer; the same one stays as the user filled it in.
    void setSecurity(const Security &security, std::optional<double> price);
    /// Is filled in until the user chooses a price, and not while the keyboard is in the ticket: nothing
    /// changes under somebody's hands. Nothing: what stands there stays.
    void setLastPrice(std::optional<double> price);
    /// Names the account that the order is for; empty: it is not known.
    void setAccount(const QString &account);
    /// Says what the user has to know besides; empty: nothing.
    void setNotice(const QString &notice);
    void setFacts(const DraftFacts &facts);
    void setSide(Direction side);
    /// The price that the user chose; rounded to the tick.
    void setPrice(double price);
    /// The quantity that the user chose.
    void setQuantity(qint64 shares);
    /// Leaves nothing to be read but the quantity that the user is filling in.
    void setAmountsHidden(bool hidden);

    OrderDraft draft() const;

    /// Puts the keyboard into the price, ready to be typed over.
    void focusPrice();

    /// To be called when a sent order has ended, answered, or no longer waited for: until then the ticket
    /// sends no other one.
    void endSending();
    /// What became of the last orders, at the foot of the ticket.
    OrderResults *results() const { return m_results; }

Q_SIGNALS:
    /// The user sends this order; nothing that is known speaks against it.
    void sendAsked(const OrderRequest &order);
    /// The user is done with the ticket for now.
    void left();

protected:
    void changeEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void setUpSides();
    void setUpFields();
    void setUpLayout();
    void showTexts();
    void showDraft();
    void takeRules();
    void showRules();
    void showSteps();
    void fillInPrice(double price);
    void showAccount();
    void send();

    Security m_security;
    DraftFacts m_facts;
    Direction m_side = Direction::Buy;
    bool m_hidesAmounts = false;
    bool m_isSending = false;   ///< the order before has not ended
    bool m_hasOwnPrice = false; ///< one that the user chose
    QString m_accountName;
    QLabel *m_title;
    QLabel *m_account;
    QPushButton *m_buy;
    QPushButton *m_sell;
    QLabel *m_priceLabel;
    PriceBox *m_price;
    QLabel *m_limits;
    QLabel *m_quantityLabel;
    QuantityBox *m_quantity;
    PartButtons *m_parts;
    QLabel *m_largest;
    QLabel *m_amountLabel;
    QLabel *m_amount;
    QLabel *m_problem;
    QPushButton *m_send;
    QLabel *m_notice;
    OrderResults *m_results;
    ShrinkingArea *m_fields = nullptr;
};

} // namespace Terminal
