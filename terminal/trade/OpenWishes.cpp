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
    if (open->wish.isNumbered && open->tries < mostTries) {
        ++open->tries;
        waitFor(id);
        repeat(Open(*open));
        return;
    }
    open->isLate = true;
    const auto tell = open->wish.tell;
    tell({DeskOutcome::Kind::NoAnswer, {}});
    Q_EMIT unanswered();
}

void OpenWishes::askAgain()
{
    const QHash<QString, Open> open = m_open; // who is told may add others
    for (const Open &one : open) {
        if (one.wish.isNumbered && !one.isLate) {
            repeat(one);
        }
    }
}

/// A module or bus that is away may be back at the next try.
void OpenWishes::repeat(const Open &open)
{
    if (open.wish.mayRepeat() && m_send(open.wish.question) && !open.isKept) {
        open.wish.tellRepeat();
    }
}

void OpenWishes::keepOpen(const QString &id)
{
    const auto open = m_open.find(id);
    if (open != m_open.end()) {
        open->isKept = true;
        open->tries = 1;
    }
}

void OpenWishes::askAboutKept()
{
    const QHash<QString, Open> open = m_open; // who is told may add others
    for (const Open &one : open) {
        if (one.isKept && !one.isLate) {
            repeat(one);
        }
    }
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
