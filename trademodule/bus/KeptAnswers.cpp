#include "trademodule/bus/KeptAnswers.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "trading/ModuleVocabulary.h"
#include "trading/TradingDate.h"

#include <QJsonDocument>

#include <memory>

namespace TradeModule {

using namespace TradeChart::TradeKeyFields;
using Trading::TradingDate;

namespace {

constexpr int mostBytes = 16 << 20;

/// An answer without rows takes about as much.
constexpr int bytesOfFields = 1 << 10;

/// What tells who asks, and in which language, is no part of what is asked.
QByteArray keyOf(QJsonObject question)
{
    for (const char *const asker :
         {SCREENID, OBJECTID, Trading::PlaceFields::CLIENTNO, Trading::AskerFields::LANG}) {
        question.remove(QLatin1String(asker));
    }
    return QJsonDocument(question).toJson(QJsonDocument::Compact);
}

} // namespace

KeptAnswers::KeptAnswers(Database *database) : m_database(database), m_contents(mostBytes) {}

/// Looked at before anything is read, so that an answer is never older than the state it is kept for. What is
/// of today is of another day tomorrow.
void KeptAnswers::forgetOld()
{
    const QString state = TradingDate::today().text() + QLatin1Char(' ') + m_database->state();
    if (state != m_state) {
        m_contents.clear();
        m_state = state;
    }
}

KeptAnswers::Content KeptAnswers::of(const QJsonObject &question, const std::function<Content()> &read)
{
    forgetOld();
    const QByteArray key = keyOf(question);
    if (const Content *const kept = m_contents.object(key)) {
        return *kept;
    }
    auto content = std::make_unique<Content>(read());
    const Content result = *content;
    m_contents.insert(key, content.release(), key.size() + bytesOfFields + result.rows.size());
    return result;
}

} // namespace TradeModule
