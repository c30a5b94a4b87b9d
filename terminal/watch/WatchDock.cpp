#include "terminal/watch/WatchDock.h"

#include "terminal/trade/TradeDock.h"
#include "terminal/watch/WatchView.h"

#include <QAction>
#include <QMainWindow>
#include <QShortcut>

#include <algorithm>
#include <utility>

namespace Terminal {

namespace {

constexpr auto listKey = Qt::Key_F6;
constexpr int watchKey = Qt::CTRL + Qt::Key_D;

} // namespace

WatchDock::WatchDock(QMainWindow *window, Facts facts)
    : m_window(window),
      m_facts(std::move(facts)),
      m_view(new WatchView(&m_table)),
      m_dock(new TradeDock("watchDock", m_view, window, Qt::LeftDockWidgetArea)),
      m_watch(new QAction(this))
{
    m_watch->setCheckable(true);
    m_watch->setShortcut(watchKey);
    m_watch->setAutoRepeat(false);
    window->addAction(m_watch);
    connect(m_watch, &QAction::triggered, this, &WatchDock::toggleShown);
    connect(m_view, &WatchView::chartAsked, this, &WatchDock::chartAsked);
    connect(m_view, &WatchView::removalAsked, this, &WatchDock::remove);
    connect(m_dock, &QDockWidget::visibilityChanged, this, &WatchDock::showPrices);
    auto *const shortcut = new QShortcut(listKey, window);
    connect(shortcut, &QShortcut::activated, this, [this] {
        m_dock->show();
        m_view->setFocus(Qt::ShortcutFocusReason);
    });
    showTexts();
}

QAction *WatchDock::action() const
{
    return m_dock->toggleViewAction();
}

void WatchDock::setCodes(const QStringList &codes)
{
    m_codes = codes;
    setShownCode(m_shownCode);
    showPrices();
}

void WatchDock::setShownCode(const QString &code)
{
    m_shownCode = code;
    m_watch->setChecked(m_codes.contains(code));
}

/// A list that nobody sees asks for no price.
void WatchDock::showPrices()
{
    if (m_dock->isHidden()) {
        return;
    }
    std::vector<WatchedSecurity> rows;
    for (const QString &code : qAsConst(m_codes)) {
        const Security *const security = m_facts.find(code);
        WatchedSecurity row{security == nullptr ? Security{code, {}, {}} : *security, {}, {}};
        if (security != nullptr) {
            row.last = m_facts.last(*security);
        }
        if (row.last) {
            row.closeBefore = closeBefore(code, row.last->day);
        }
        rows.push_back(row);
    }
    m_table.setRecords(std::move(rows));
    constexpr int widest = 320;
    m_view->setMinimumWidth(std::min(m_view->neededWidth(), widest));
    m_view->fitColumns();
}

std::optional<double> WatchDock::closeBefore(const QString &code, Trading::TradingDate day)
{
    const QString key = code + day.text();
    const auto known = m_closes.constFind(key);
    if (known != m_closes.constEnd()) {
        return *known;
    }
    const auto close = m_facts.closeBefore(code, day);
    if (close) {
        m_closes.insert(key, *close);
    }
    return close;
}

void WatchDock::toggleShown()
{
    QStringList codes = m_codes;
    if (codes.removeAll(m_shownCode) == 0) {
        codes.append(m_shownCode);
    }
    setCodes(codes);
}

void WatchDock::remove(const QString &code)
{
    QStringList codes = m_codes;
    codes.removeAll(code);
    setCodes(codes);
}

void WatchDock::setTheme(const ChartTheme &theme)
{
    m_table.setTheme(theme);
    m_dock->setTheme(theme);
}

void WatchDock::showTexts()
{
    m_dock->setWindowTitle(tr("Watch list"));
    m_view->setAccessibleName(tr("Watch list"));
    action()->setText(QStringLiteral("%1 (%2)").arg(
        tr("Watch list"), QKeySequence(listKey).toString(QKeySequence::NativeText)));
    m_watch->setText(tr("Watch the shown security"));
    m_table.retranslate();
}

} // namespace Terminal
