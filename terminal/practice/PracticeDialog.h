#pragma once

#include "terminal/practice/PracticeBeginning.h"
#include "terminal/practice/PracticeSessions.h"

#include <QDialog>

#include <memory>
#include <optional>
#include <vector>

class QDoubleSpinBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QSpinBox;
class QTableWidget;

namespace Terminal {

/// What a window offers to practise.
struct PracticeOffer
{
    QString dataFolder;
    QString code;
    QString securityName;
    std::optional<Trading::TradingDate>
        day;          ///< nothing: no recorded minutes are shown, and none can be begun
    QString ledger;   ///< whose account can be copied; empty: none
    double price = 0; ///< proposed as the cost of shares that are held, yuan
    QString moduleProgram;
    QString language;
};

/// Begins a practice of the shown day, and lists those that are kept, to be continued or deleted.
class PracticeDialog : public QDialog
{
    Q_OBJECT

public:
    PracticeDialog(PracticeSessions sessions, PracticeOffer offer, QWidget *parent);

    /// Shows why a session was not opened, say.
    void showNotice(const QString &text);

Q_SIGNALS:
    /// A session was begun, or is to be continued. The dialog is left open.
    void chosen(const PracticeSession &session);

private:
    QGroupBox *makeForm();
    QWidget *makeList();
    void showSessions();
    void showState();
    void begin();
    void continueChosen();
    void removeChosen();
    const PracticeSession *chosenSession() const;
    PracticeWish wish() const;

    const PracticeSessions m_sessions;
    const PracticeOffer m_offer;
    std::vector<PracticeSession> m_listed;
    QLineEdit *m_name;
    QRadioButton *m_copied;
    QRadioButton *m_ownChoice;
    QDoubleSpinBox *m_cash;
    QSpinBox *m_shares;
    QDoubleSpinBox *m_cost;
    QPushButton *m_begin;
    QTableWidget *m_table;
    QPushButton *m_continue;
    QPushButton *m_delete;
    QLabel *m_notice;
    std::unique_ptr<PracticeBeginning> m_beginning; ///< of one that is on its way
};

} // namespace Terminal
