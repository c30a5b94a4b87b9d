#pragma once

#include "terminal/answers/ScreenAnswers.h"

#include <gmock/gmock.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <ostream>
#include <string>

namespace Terminal {

/// An answer that is right but for one key.
struct WrongAnswer
{
    const char *name;
    const char *command;
    const char *key;  ///< of the message; of its first row after "row.", of its record after "data.";
                      ///< "*": several keys of the message
    const char *json; ///< what stands there; null: the key is missing
    const char *told; ///< to the user, a line for each fault
};

inline QJsonObject objectOf(const char *json)
{
    return QJsonDocument::fromJson(json).object();
}

inline void PrintTo(const WrongAnswer &wrong,
                    std::ostream *out) // NOLINT(readability-identifier-naming): found by its name
{
    *out << wrong.name;
}

/// What a trading module answers to the screen "screen-1" about 600519, as it must be.
inline QJsonObject rightAnswer(const QString &command)
{
    QJsonObject answer = objectOf(R"({"stkcode":"600519","market":"1","screenId":"screen-1","success":true,
        "errcode":0,"msg":""})");
    answer[QStringLiteral("cmd")] = command;
    const QJsonObject trade = objectOf(R"({"stkcode":"600519","market":"1","bsflag2":"B","ordersno":"7",
        "orderdate":"20240102","opertime":"09315002","bizdate":"20240102","matchtime":"09315002",
        "matchprice":"10.50","matchqty":"300","matchamt":"3150.00","buy":true,"date":"20240102","price":10.5,
        "vol":300})");
    const QJsonObject order = objectOf(R"({"stkcode":"600519","stkname":"A","market":"1","bsflag2":"0S",
        "orderstatus":"7","fundid":"paper","ordersno":"17","orderdate":"20240102","operdate":"20240102",
        "opertime":"09315002","orderprice":"10.50","orderqty":"300","matchqty":"200","matchamt":"2100.00",
        "cancelqty":"0","cancelflag":"0"})");
    const QHash<QString, QJsonValue> data = {
        {QStringLiteral("HolderCostPrice"),
         objectOf(R"({"stkcode":"600519","market":"1","costprice":"12.345"})")},
        {QStringLiteral("TodayTrade"), QJsonArray{trade, trade}},
        {QStringLiteral("HistoryTrade"), QJsonArray{trade, trade}},
        {QStringLiteral("EntrustTodayTrade"), QJsonArray{order, order}},
        {QStringLiteral("EntrustHistoryTrade"), QJsonArray{order, order}},
        {QStringLiteral("EntrustCancel"),
         QJsonArray{QJsonObject{{QStringLiteral("msgok "), QStringLiteral("done")}}}},
    };
    answer[QStringLiteral("data")] = data.value(command);
    if (command == QLatin1String("EntrustCancel")) {
        answer[QStringLiteral("objectId")] = QStringLiteral("{1}");
    }
    return answer;
}

inline void change(QJsonObject *object, const QString &key, const char *json)
{
    if (json == nullptr) {
        object->remove(key);
    } else {
        object->insert(key, QJsonDocument::fromJson('[' + QByteArray(json) + ']').array().at(0));
    }
}

/// The right answer, with its one fault.
inline QByteArray payloadOf(const WrongAnswer &wrong)
{
    QJsonObject answer = rightAnswer(QLatin1String(wrong.command));
    const QString key = QLatin1String(wrong.key);
    const QString dataKey = QStringLiteral("data");
    if (key == QLatin1String("*")) {
        const QJsonObject changes = objectOf(wrong.json);
        for (auto changed = changes.begin(); changed != changes.end(); ++changed) {
            answer[changed.key()] = changed.value();
        }
    } else if (key.startsWith(QLatin1String("row."))) {
        QJsonArray rows = answer.value(dataKey).toArray();
        QJsonObject row = rows.at(0).toObject();
        change(&row, key.mid(4), wrong.json);
        rows[0] = row;
        answer[dataKey] = rows;
    } else if (key.startsWith(QLatin1String("data."))) {
        QJsonObject record = answer.value(dataKey).toObject();
        change(&record, key.mid(5), wrong.json);
        answer[dataKey] = record;
    } else {
        change(&answer, key, wrong.json);
    }
    return QJsonDocument(answer).toJson();
}

/// What a window that shows 600519 tells of wrong answers.
class WrongAnswers : public ::testing::TestWithParam<WrongAnswer>
{
protected:
    WrongAnswers()
    {
        answers.setSecurity({QStringLiteral("600519"), Trading::Market::Shanghai});
        QObject::connect(&answers, &ScreenAnswers::foundWrong, &answers,
                         [this](const QStringList &faults) { told += faults; });
    }

    std::string toldOf(const WrongAnswer &wrong)
    {
        answers.take("TradeQuery", payloadOf(wrong), "screen-1");
        return told.join(QLatin1Char('\n')).toStdString();
    }

    ScreenAnswers answers{"screen-1", nullptr};
    QStringList told;
};

} // namespace Terminal
