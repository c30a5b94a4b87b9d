// crowd_member DIRECTORY COUNT: so many endpoints of one process on the bus of DIRECTORY, for bench/crowd.
// Says on standard output "joined" when all are accepted by the bus, again whenever all have come back, and
// "heard" when each has heard one notification more.
#include "endpoint/EndPoint.h"

#include <QCoreApplication>
#include <QSet>

#include <cstdio>
#include <memory>
#include <vector>

namespace {

using LocalCommunication::EndPoint;

/// Counts what each member must do once, and says when all have.
class Round
{
public:
    Round(const char *word, std::size_t count) : m_word(word), m_count(count) {}

    void done(const EndPoint *member)
    {
        m_done.insert(member);
        if (static_cast<std::size_t>(m_done.size()) == m_count) {
            m_done.clear();
            std::puts(m_word);
            std::fflush(stdout);
        }
    }

private:
    const char *const m_word;
    const std::size_t m_count;
    QSet<const EndPoint *> m_done;
};

} // namespace

int main(int count, char **words)
{
    const QCoreApplication application(count, words);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 3) {
        std::fputs("crowd_member DIRECTORY COUNT\n", stderr);
        return 2;
    }
    const auto size = static_cast<std::size_t>(arguments[2].toUInt());
    Round joined("joined", size);
    Round heard("heard", size);
    std::vector<std::unique_ptr<EndPoint>> members(size);
    for (auto &member : members) {
        member = std::make_unique<EndPoint>(nullptr);
        const EndPoint *const self = member.get();
        QObject::connect(self, &EndPoint::ready, self, [&joined, self] { joined.done(self); });
        QObject::connect(self, &EndPoint::messageReceived, self, [&heard, self] { heard.done(self); });
        member->subscribe("Global", QByteArray("TradeNotify"));
        member->connect(arguments[1]);
    }
    return QCoreApplication::exec();
}
