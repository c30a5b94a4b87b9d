// The plug-in reads an answer in place, or through Qt where it is not sure that Qt reads the same.
#pragma once

#include <QByteArray>

#include <gtest/gtest.h>

enum class ReadingWay { InPlace, ThroughQt };

/// The same message for Qt, but only Qt reads one that begins with a byte order mark.
inline QByteArray readIn(ReadingWay way, const QByteArray &json)
{
    return way == ReadingWay::ThroughQt ? "\xEF\xBB\xBF" + json : json;
}

/// The way of the messages that a test program's overlays hear. The tests of answers run once in each:
/// TRADECHART_TEST_ANSWERS=through-qt
inline ReadingWay heardIn()
{
    return qgetenv("TRADECHART_TEST_ANSWERS") == "through-qt" ? ReadingWay::ThroughQt : ReadingWay::InPlace;
}

/// For suites that have both ways as their parameter.
inline const auto bothWays = ::testing::Values(ReadingWay::InPlace, ReadingWay::ThroughQt);

inline std::string nameOfWay(const ::testing::TestParamInfo<ReadingWay> &info)
{
    return info.param == ReadingWay::InPlace ? "InPlace" : "ThroughQt";
}
