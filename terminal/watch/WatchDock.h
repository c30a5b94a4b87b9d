#pragma once

#include "terminal/trade/LastPrice.h"
#include "terminal/watch/WatchTable.h"

#include <QHash>
#include <QObject>
#include <QStringList>

#include <functional>

class QAction;
class QMainWindow;

namespace Terminal {

class TradeDock;
class WatchView;

/// The securities that the user watches, left of the chart, with their last prices; hidden at first.
class WatchDock : public QObject
{
    Q_OBJECT

public:
    /// What is known of securities.
    struct Facts
    {
        std::function<const Security *(const QString &code)> find; ///< null for one that is not known
        LastPriceOf last;
        /// The close before a day.
        std::function<std::optional<double>(const QString &code, Trading::TradingDate day)> closeBefore;
    };

    /// `window` and what `facts` ask must outlive this object.
    WatchDock(QMainWindow *window, Facts facts);

    void setCodes(const QStringList &codes);
    /// In the order of the list.
    const QStringList &codes() const { return m_codes; }

    /// The security that the chart shows, for the action that watches it.
    void setShownCode(const QString &code);
    /// Other prices or names are known now.
    void showPrices();
    void setTheme(const ChartTheme &theme);
    void showTexts();

    /// Shows and hides the list.
    QAction *action() const;
    /// Puts the shown security on the list, or takes it away.
    QAction *watchAction() const { return m_watch; }

Q_SIGNALS:
    void chartAsked(const QString &code);

private:
    std::optional<double> closeBefore(const QString &code, Trading::TradingDate day);
    void toggleShown();
    void remove(const QString &code);

    QMainWindow *m_window;
    Facts m_facts;
    QStringList m_codes;
    QString m_shownCode;
    QHash<QString, double> m_closes; ///< by code and day: files are not read with each quote
    WatchTable m_table;
    WatchView *m_view;
    TradeDock *m_dock;
    QAction *m_watch;
};

} // namespace Terminal
