#include "trademodule/cli/Standby.h"

#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"
#include "trademodule/cli/ServiceManager.h"

#include <QEventLoop>
#include <QTimer>

#include <optional>

namespace TradeModule {

namespace {

constexpr std::chrono::milliseconds betweenLooks(500);

void tellOnce(const QString &hindrance, QString *told, ServiceLog *log)
{
    if (!hindrance.isEmpty() && hindrance != *told) {
        log->tell(hindrance);
    }
    *told = hindrance;
}

enum Outcome { ToldToEnd = 0, Followed, LedgerIsLost };

} // namespace

bool standByFor(ServingLease *lease, ServiceLog *log)
{
    if (lease->tryFollow()) {
        return true;
    }
    const QString standing = translated("standing by, this ledger is served: %1").arg(lease->ownersName());
    log->tell(standing);
    ServiceManager().tellReady(standing);
    QEventLoop loop;
    std::optional<Error> failure;
    QString hindrance;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &loop, [&] {
        ServiceManager().tellAlive();
        try {
            if (lease->tryFollow()) {
                loop.exit(Followed);
            }
            tellOnce(lease->hindrance(), &hindrance, log);
        } catch (const LedgerUnavailable &) { // goes on waiting
        } catch (const Error &error) {
            failure = error;
            loop.exit(LedgerIsLost);
        }
    });
    timer.start(betweenLooks);
    const int outcome = loop.exec();
    if (failure) {
        throw Error(*failure);
    }
    if (outcome == Followed) {
        log->tell(translated("followed %1; the fence is %2 now")
                      .arg(lease->formerName())
                      .arg(lease->server().fence));
    }
    return outcome == Followed;
}

} // namespace TradeModule
