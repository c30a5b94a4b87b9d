#include "tradechartobject/common/TradeChannel.h"

#include "tradechartobject/common/NumberText.h"
#include "tradechartobject/common/Security.h"
#include "tradechartobject/common/TradeVocabulary.h"

#include <QCoreApplication>
#include <QDebug>
#include <QLoggingCategory>

#include <algorithm>
#include <limits>

namespace TradeChart {
namespace TradeChannel {

namespace {

constexpr char globalChannel[] = "Global";
constexpr int defaultRefreshSeconds = 10;

/// An interval longer than a timer can count becomes the longest that it can.
int toMilliseconds(int seconds)
{
    using Limits = std::numeric_limits<int>;
    return static_cast<int>(std::clamp(seconds * qint64{1000}, qint64{Limits::min()}, qint64{Limits::max()}));
}

} // namespace

int refreshSeconds(const QJsonObject &config)
{
    return config.value(QLatin1String(TradeKeyFields::AUTOREFRESHTIME)).toInt(defaultRefreshSeconds);
}

void joinTerminalBus(LocalCommunication::EndPoint &endPoint)
{
    endPoint.connect(QCoreApplication::applicationDirPath());
}

void subscribeScreen(LocalCommunication::EndPoint &endPoint, Korvane::IChartAxis &axis)
{
    endPoint.subscribe(axis.screenId(), QList<QByteArray>{Topic::TRADENOTIFY, Topic::TRADEQUERY});
    endPoint.subscribe(globalChannel, QByteArray(Topic::TRADENOTIFY));
}

void subscribeGlobal(LocalCommunication::EndPoint &endPoint)
{
    endPoint.subscribe(globalChannel, QList<QByteArray>{Topic::TRADENOTIFY, Topic::TRADEQUERY});
}

void leave(LocalCommunication::EndPoint &endPoint, const QObject *overlay)
{
    QObject::disconnect(&endPoint, nullptr, overlay, nullptr);
    endPoint.disconnect();
}

void restart(QTimer *timer, int seconds)
{
    if (timer != nullptr) {
        timer->start(toMilliseconds(seconds));
    }
}

void startIfIdle(QTimer *timer, int seconds)
{
    if (timer != nullptr && !timer->isActive()) {
        restart(timer, seconds);
    }
}

void stop(QTimer *timer)
{
    if (timer != nullptr) {
        timer->stop();
    }
}

void remove(QTimer *&timer)
{
    if (timer != nullptr) {
        timer->stop();
        delete timer;
        timer = nullptr;
    }
}

QJsonObject securityRequest(const char *command, const Korvane::tagCodeWithName &security)
{
    return {{QLatin1String(TradeKeyFields::CMD), QLatin1String(command)},
            {QLatin1String(TradeKeyFields::STKCODE), securityCode(security)},
            {QLatin1String(TradeKeyFields::MARKET), marketCode(security)}};
}

QJsonObject screenRequest(const char *command, const Korvane::tagCodeWithName &security,
                          Korvane::IChartAxis &axis)
{
    QJsonObject request = securityRequest(command, security);
    request.insert(QLatin1String(TradeKeyFields::SCREENID), QString::fromUtf8(axis.screenId()));
    return request;
}

QByteArray toJson(const QJsonObject &request, QJsonDocument::JsonFormat format)
{
    return QJsonDocument(request).toJson(format);
}

bool publish(LocalCommunication::EndPoint &endPoint, const QByteArray &json)
{
    return endPoint.sendMessage(globalChannel, Topic::TRADEQUERY, json);
}

void logSent(const char *function, const QByteArray &json)
{
    if (isDebugLogOn()) {
        qDebug().nospace() << "send " << function << ": " << QString::fromUtf8(json);
    }
}

bool send(LocalCommunication::EndPoint &endPoint, const QJsonObject &request, const char *function)
{
    const QByteArray json = toJson(request);
    if (!publish(endPoint, json)) {
        return false;
    }
    logSent(function, json);
    return true;
}

std::optional<QJsonObject> ask(LocalCommunication::EndPoint &endPoint, const QByteArray &json)
{
    return parseObject(endPoint.request(Topic::TRADEQUERY, json));
}

std::optional<QJsonObject> parseObject(const QByteArray &payload)
{
    const QJsonDocument document = QJsonDocument::fromJson(payload);
    return document.isObject() ? std::make_optional(document.object()) : std::nullopt;
}

std::optional<QJsonObject> parseMessage(const QByteArray &payload)
{
    auto message = parseObject(payload);
    return message && !message->isEmpty() ? message : std::nullopt;
}

QString text(const QJsonObject &message, const char *key)
{
    return message.value(QLatin1String(key)).toString();
}

QJsonArray rows(const QJsonObject &answer)
{
    return answer.value(QLatin1String(TradeKeyFields::DATA)).toArray();
}

bool isCommand(const QJsonObject &message, const char *command)
{
    return text(message, TradeKeyFields::CMD) == QLatin1String(command);
}

bool isAbout(const QJsonObject &message, const Korvane::tagCodeWithName &security)
{
    return securityCode(security).compare(text(message, TradeKeyFields::STKCODE), Qt::CaseInsensitive) == 0;
}

QString answerMarketCode(const QString &market)
{
    // Only the low 16 bits of the number count.
    switch (static_cast<std::int16_t>(toInt(market))) {
    case 1:
        return QStringLiteral("SH");
    case 2:
        return QStringLiteral("SZ");
    default:
        return {};
    }
}

bool isDebugLogOn()
{
    return QLoggingCategory::defaultCategory()->isDebugEnabled();
}

} // namespace TradeChannel
} // namespace TradeChart
