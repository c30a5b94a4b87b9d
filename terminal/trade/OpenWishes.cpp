#include "terminal/trade/OpenWishes.h"

#include <QTimer>

namespace Terminal {

void OpenWishes::add(const Wish &wish)
{
    if (!m_send(wish.question)) {
        QTimer::singleShot(0, this, [tell = wish.tell] { tell({DeskOutcome::Kind::NotSent, {}}); });
        return;
    }
    m_open.insert(wish.id, {wish});
    waitFor(wish.id);
}

void OpenWishes::waitFor(const QString &id)
{
    QTimer::singleShot(m_timeout, this, [this, id] { endTry(id); });
}

/// A wish that was given up stays: its late answer is told, too.
void OpenWishes::endTry(const QString &id)
{
    const auto open = m_open.find(id);
    if (open == m_open.end()) {
        return;
    }
    if (open->tries < mostTries && open->wish.mayRepeat()) {
        ++open->tries;
        m_send(open->wish.question); // a bus that is away may be back at the next try
        waitFor(id);
        const auto tellRepeat = open->wish.tellRepeat;
        tellRepeat();
        return;
    }
    open->isLate = true;
    const auto tell = open->wish.tell;
    tell({DeskOutcome::Kind::NoAnswer, {}});
    Q_EMIT unanswered();
}

bool OpenWishes::close(const QString &id, const DeskOutcome &outcome)
{
    const auto found = m_open.find(id);
    if (found == m_open.end()) {
        return false;
    }
    const Open open = *found;
    m_open.erase(found);
    DeskOutcome told = outcome;
    told.isLate = open.isLate;
    open.wish.tell(told);
    return true;
}

} // namespace Terminal
