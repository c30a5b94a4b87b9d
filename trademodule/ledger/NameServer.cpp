#include "trademodule/ledger/NameServer.h"

#include <QHostAddress>
#include <QHostInfo>

#include <future>
#include <memory>
#include <thread>

namespace TradeModule {

/// By a thread that is left alone when it takes too long: nothing can end it.
bool nameServerAnswers(const QString &host, std::chrono::milliseconds longest)
{
    if (!QHostAddress(host).isNull()) {
        return true; // it needs none
    }
    const auto answered = std::make_shared<std::promise<void>>();
    std::thread([host, answered] {
        QHostInfo::fromName(host);
        answered->set_value();
    }).detach();
    return answered->get_future().wait_for(longest) == std::future_status::ready;
}

} // namespace TradeModule
