#pragma once

#include "trademodule/cli/Command.h"

#include <QJsonObject>

#include <functional>

namespace TradeModule {

/// What a command tells another program: one object on one line of standard output.
namespace JsonReply {

void write(const QJsonObject &object);

/// Runs a command for a program. An Error is written as {"refused":{...}} before it goes on.
int run(const std::function<int()> &command);

} // namespace JsonReply

} // namespace TradeModule
