#include "tests/trademodule/check/support/RecordedModule.h"

#include <QSet>

#include <algorithm>
#include <memory>

namespace TradeModule {

namespace {

/// Stands for the screen of who asks, which is another one each time.
const QByteArray anyScreen = "@screen@";

/// Read as text: there are a hundred thousand questions.
QByteArray screenOf(const QByteArray &question)
{
    const QByteArray key = "\"screenId\":\"";
    const int begin = question.indexOf(key);
    const int end = question.indexOf('"', begin + key.size());
    return begin < 0 ? QByteArray() : question.mid(begin + key.size(), end - begin - key.size());
}

QByteArray replaced(QByteArray text, const QByteArray &from, const QByteArray &to)
{
    return from.isEmpty() ? text : text.replace(from, to);
}

QVector<Said> renamed(QVector<Said> said, const QByteArray &from, const QByteArray &to)
{
    for (Said &one : said) {
        one.channel = replaced(one.channel, from, to);
        one.payload = replaced(one.payload, from, to);
    }
    return said;
}

} // namespace

StandInModule::Answer RecordedModule::recording(const StandInModule::Answer &module)
{
    return [this, module](const QByteArray &question) {
        const QByteArray screen = screenOf(question);
        QVector<Said> said = module(question);
        for (Said &one : said) {
            one.kind = kindOf(one);
        }
        m_said[replaced(question, screen, anyScreen)].append(renamed(said, screen, anyScreen));
        return said;
    };
}

RecordedModule RecordedModule::with(const Mutation &mutation) const
{
    RecordedModule changed = *this;
    for (auto &turns : changed.m_said) {
        for (QVector<Said> &turn : turns) {
            turn = mutation.applied(turn);
        }
    }
    return changed;
}

StandInModule::Answer RecordedModule::playing() const
{
    const auto asked = std::make_shared<QHash<QByteArray, int>>();
    return [this, asked](const QByteArray &question) {
        const QByteArray screen = screenOf(question);
        const QByteArray key = replaced(question, screen, anyScreen);
        const auto known = m_said.constFind(key);
        return known == m_said.constEnd()
                   ? QVector<Said>()
                   : renamed(known->value(std::min((*asked)[key]++, known->size() - 1)), anyScreen, screen);
    };
}

QVector<Said> RecordedModule::all() const
{
    QVector<Said> all;
    QSet<QByteArray> payloads;
    for (const auto &turns : m_said) {
        for (const QVector<Said> &turn : turns) {
            for (const Said &one : turn) {
                if (!payloads.contains(one.payload)) {
                    payloads.insert(one.payload);
                    all.append(one);
                }
            }
        }
    }
    return all;
}

} // namespace TradeModule
