// A terminal that only places orders, with the terminal's own order desk: those of a plan, a file that grows
// meanwhile, in its order. What is answered goes into a journal, so that it may be killed at any moment:
// started again, it places what the journal has no answer for, under the same numbers.
//
//     placing_terminal BUS PLAN JOURNAL
//
// A line of the plan: number, buy or sell, price, quantity. A line of the journal: "asked", "again",
// "refused" or "placed", the number, and for the last the order's number.
#include "terminal/services/ModuleWatch.h"
#include "terminal/trade/OrderDesk.h"
#include "trading/ExchangeTime.h"
#include "trading/ModuleVocabulary.h"

#include <QCoreApplication>
#include <QFile>
#include <QSet>
#include <QTimer>

#include <algorithm>
#include <chrono>

namespace {

using namespace std::chrono_literals;
using namespace Terminal;

constexpr auto betweenLooks = 20ms;
constexpr std::chrono::milliseconds shortPatience = 300ms;
constexpr std::chrono::milliseconds longPatience = 3s; // a terminal's own

class PlacingTerminal
{
public:
    PlacingTerminal(const QString &plan, const QString &journal) : m_plan(plan), m_journal(journal)
    {
        m_journal.open(QIODevice::ReadWrite | QIODevice::Append | QIODevice::Unbuffered);
        m_plan.open(QIODevice::ReadOnly);
        readAnswered();
        setPatience(shortPatience);
        m_desk.setModule([this] { return module(); });
        QObject::connect(&m_watch, &ModuleWatch::changed, &m_desk, [this] {
            if (m_watch.isAnswering()) {
                m_desk.askForOutcomes();
            }
        });
        QObject::connect(&m_desk, &OrderDesk::askedAgain, &m_desk,
                         [this](const OrderRequest &order) { note("again", order.clientNumber); });
        QObject::connect(
            &m_desk, &OrderDesk::placed, &m_desk,
            [this](const OrderRequest &order, const DeskOutcome &outcome) { take(order, outcome); });
        QObject::connect(&m_look, &QTimer::timeout, &m_desk, [this] { placeMore(); });
    }

    void start(const QString &bus)
    {
        m_watch.start(bus);
        m_desk.start(bus);
        m_look.start(betweenLooks);
    }

private:
    DeskModule module() const
    {
        const auto presence = m_watch.presence();
        return presence ? DeskModule{presence->knows(Trading::Capability::CLIENTNO), presence->account(), {}}
                        : DeskModule();
    }

    void readAnswered()
    {
        m_journal.seek(0);
        for (const QByteArray &line : m_journal.readAll().split('\n')) {
            const QList<QByteArray> words = line.split(' ');
            if (words[0] == "placed") {
                m_answered.insert(QString::fromLatin1(words.value(1)));
            }
        }
    }

    /// What has no number would be placed twice.
    void placeMore()
    {
        readPlan();
        if (!module().knowsClientNumbers) {
            return;
        }
        const QVector<OrderRequest> due = std::exchange(m_due, {});
        for (const OrderRequest &order : due) {
            note("asked", order.clientNumber);
            m_desk.place(order);
        }
    }

    void readPlan()
    {
        m_unread += m_plan.readAll();
        for (int end = m_unread.indexOf('\n'); end >= 0; end = m_unread.indexOf('\n')) {
            const QList<QByteArray> words = m_unread.left(end).split(' ');
            m_unread.remove(0, end + 1);
            OrderRequest order;
            order.security = {QStringLiteral("000001"), Trading::Market::Shenzhen, {}};
            order.clientNumber = QString::fromLatin1(words.value(0));
            order.side = words.value(1) == "buy" ? Direction::Buy : Direction::Sell;
            order.price = words.value(2).toDouble();
            order.quantity = words.value(3).toLongLong();
            if (!m_answered.contains(order.clientNumber)) {
                m_due.append(order);
            }
        }
    }

    void take(const OrderRequest &order, const DeskOutcome &outcome)
    {
        // asked again and again, a module on a busy machine would answer nothing but repetitions
        const bool isSlow = outcome.kind == DeskOutcome::Kind::NoAnswer || outcome.isLate;
        setPatience(isSlow ? std::min(2 * m_patience, longPatience) : shortPatience);
        if (outcome.kind == DeskOutcome::Kind::Accepted) {
            note("placed", order.clientNumber + QLatin1Char(' ') + outcome.text);
            return;
        }
        if (outcome.kind == DeskOutcome::Kind::Refused) {
            note("refused", order.clientNumber + QLatin1Char(' ') + outcome.text);
        }
        QTimer::singleShot(m_patience, &m_desk, [this, order] { m_due.append(order); });
    }

    void setPatience(std::chrono::milliseconds patience)
    {
        m_patience = patience;
        m_desk.setTimeout(patience);
    }

    void note(const char *what, const QString &text)
    {
        m_journal.write(QByteArray(what) + ' ' + text.toUtf8() + '\n');
    }

    QFile m_plan;
    QFile m_journal;
    QByteArray m_unread;      // the beginning of a line of the plan
    QSet<QString> m_answered; // before it was started
    QVector<OrderRequest> m_due;
    std::chrono::milliseconds m_patience = shortPatience;
    ModuleWatch m_watch{nullptr};
    OrderDesk m_desk;
    QTimer m_look;
};

} // namespace

int main(int argc, char *argv[])
{
    const bool hasExchangeTime = Trading::enterExchangeTime();
    const QCoreApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    if (words.size() != 4 || !hasExchangeTime) {
        return 2;
    }
    PlacingTerminal terminal(words[2], words[3]);
    terminal.start(words[1]);
    return QCoreApplication::exec();
}
