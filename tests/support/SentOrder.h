#pragma once

#include <QByteArray>
#include <QJsonObject>

#include <cstdint>

/// A day as the charts number it, yyyymmdd, so many days from today.
std::uint32_t dayFromToday(int days);

/// An order as the trading module sends it: what a test does not set is a buy of today at 09:31. It converts
/// to a row, which has every value as a text.
struct SentOrder
{
    QByteArray side = "0B"; ///< or 0S
    QByteArray status = "2";
    QByteArray price = "10";
    QByteArray time = "9310000"; ///< with hundredths of a second
    QByteArray date = QByteArray::number(dayFromToday(0));
    QByteArray number = "700001";

    operator QJsonObject() const; // NOLINT(google-explicit-constructor)
};
