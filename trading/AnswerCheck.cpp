#include "trading/AnswerCheck.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "trading/KeyCheck.h"
#include "trading/ModuleVocabulary.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace Trading {

namespace {

using namespace TradeChart::TradeKeyFields;

// Values

/// A value as the user may read it.
QString shownValue(const QJsonValue &value)
{
    if (value.isObject() || value.isArray()) {
        return QString::fromLatin1(wordOf(value.isObject() ? JsonType::Record : JsonType::Rows));
    }
    const QString text = value.toVariant().toString();
    return value.isString() ? QStringLiteral("\"%1\"").arg(text) : text;
}

/// Collects what is wrong; the same of many rows once.
class Findings
{
public:
    void add(AnswerFinding::Kind kind, const MessageKey &key, const QJsonValue &value, bool isInRow)
    {
        for (AnswerFinding &known : m_findings) {
            if (isInRow && known.rows > 0 && known.kind == kind && known.key == QLatin1String(key.key)) {
                ++known.rows;
                return;
            }
        }
        m_findings.append({kind, QLatin1String(key.key), shownValue(value), key.whenWrong, isInRow ? 1 : 0,
                           key.type, key.form});
    }

    void add(const AnswerFinding &finding) { m_findings.append(finding); }

    const QVector<AnswerFinding> &all() const { return m_findings; }

private:
    QVector<AnswerFinding> m_findings;
};

/// Readers take a number as it is, whatever it is.
void checkKey(const MessageKey &key, const QJsonValue &value, bool isInRow, Findings *findings)
{
    switch (faultOf(key, value)) {
    case KeyFault::None:
        return;
    case KeyFault::Missing:
        return findings->add(AnswerFinding::Missing, key, value, isInRow);
    case KeyFault::WrongType:
        return findings->add(AnswerFinding::WrongType, key, value, isInRow);
    case KeyFault::NotAllowed:
        return value.isString() ? findings->add(AnswerFinding::NotAllowed, key, value, isInRow) : void();
    }
}

void checkKeys(const MessageKeys &keys, const QJsonObject &object, bool isInRow, Findings *findings)
{
    for (const MessageKey &key : keys) {
        if (key.whenWrong != WhenWrong::Nothing) { // what nobody minds is no news for a user
            checkKey(key, object.value(QLatin1String(key.key)), isInRow, findings);
        }
    }
}

// Answers

class Checker
{
public:
    Checker(QJsonObject answer, const AnsweredChart &chart) : m_fields(std::move(answer)), m_chart(chart) {}

    CheckedAnswer check()
    {
        m_answer.command = textOf(m_fields, CMD);
        m_answer.isForChart = isAboutChart();
        m_answer.costMethod = textOf(m_fields, CostFields::COSTMETHOD);
        const MessageRow *const row = findMessage(MessageRole::Answer, m_answer.command);
        if (row == nullptr) {
            addUnknown();
        } else if (m_answer.isForChart) {
            checkAgainst(*row);
        }
        m_answer.findings = m_findings.all();
        return m_answer;
    }

private:
    static QString textOf(const QJsonObject &object, const char *key)
    {
        return object.value(QLatin1String(key)).toString();
    }

    /// Also when it names no security: that is the fault to tell, and no other chart's.
    bool isAboutChart() const
    {
        const QString code = textOf(m_fields, STKCODE);
        return code.isEmpty() || code.compare(m_chart.security.code, Qt::CaseInsensitive) == 0;
    }

    void addUnknown()
    {
        const QJsonValue command = m_fields.value(QLatin1String(CMD));
        const AnswerFinding::Kind kind = command.isUndefined() ? AnswerFinding::Missing
                                         : command.isString()  ? AnswerFinding::Unknown
                                                               : AnswerFinding::WrongType;
        m_findings.add({kind, QLatin1String(CMD), shownValue(command)});
    }

    void checkAgainst(const MessageRow &row)
    {
        const QJsonValue success = m_fields.value(QLatin1String(SUCCESS));
        m_answer.isRefusal = success.isBool() && !success.toBool();
        if (m_answer.isRefusal) {
            m_findings.add(
                {AnswerFinding::Refused, QLatin1String(SUCCESS), textOf(m_fields, MSG), WhenWrong::NoRows});
            return;
        }
        checkScreen();
        checkKeys(row.keys, m_fields, false, &m_findings);
        checkData(row.keys);
    }

    void checkScreen()
    {
        const QString screen = textOf(m_fields, SCREENID);
        if (!screen.isEmpty() && screen != m_chart.screenId) {
            m_findings.add({AnswerFinding::OtherScreen, QLatin1String(SCREENID), shownValue(screen),
                            WhenWrong::DrawnAllTheSame});
        }
    }

    void checkData(const MessageKeys &keys)
    {
        const auto data = std::find_if(keys.begin(), keys.end(),
                                       [](const MessageKey &key) { return key.inside != nullptr; });
        const QJsonValue value = m_fields.value(QLatin1String(data->key));
        if (data->type == JsonType::Rows && value.isArray()) {
            checkRows(*data->inside, value.toArray());
        } else if (data->type == JsonType::Record && value.isObject()) {
            checkRecord(*data->inside, value.toObject());
        }
    }

    void checkRecord(const RecordShape &shape, const QJsonObject &record)
    {
        if (isOfOtherMarket(record)) {
            ++m_answer.otherMarkets;
            return;
        }
        checkKeys(shape.keys, record, false, &m_findings);
        m_answer.isDrawable = record.contains(QLatin1String(COSTPRICE));
        m_answer.rows += m_answer.isDrawable ? 1 : 0;
    }

    void checkRows(const RecordShape &shape, const QJsonArray &rows)
    {
        const bool leavesOutOthers = isMarketRequired(shape);
        m_answer.isDrawable = !rows.isEmpty();
        for (const QJsonValue &value : rows) {
            const QJsonObject row = value.toObject();
            const bool isOther = isOfOtherMarket(row);
            if (isOther && leavesOutOthers) {
                ++m_answer.otherMarkets;
                continue;
            }
            if (isOther) {
                addOtherMarket(shape, row);
            }
            checkKeys(shape.keys, row, true, &m_findings);
            ++m_answer.rows;
        }
    }

    static const MessageKey *marketKey(const RecordShape &shape)
    {
        const auto key = std::find_if(shape.keys.begin(), shape.keys.end(), [](const MessageKey &candidate) {
            return qstrcmp(candidate.key, MARKET) == 0;
        });
        return key == shape.keys.end() ? nullptr : &*key;
    }

    static bool isMarketRequired(const RecordShape &shape)
    {
        const MessageKey *const market = marketKey(shape);
        return market != nullptr && market->isRequired;
    }

    void addOtherMarket(const RecordShape &shape, const QJsonObject &row)
    {
        if (const MessageKey *const market = marketKey(shape)) {
            m_findings.add(AnswerFinding::OtherMarket, *market, row.value(QLatin1String(MARKET)), true);
        }
    }

    bool isOfOtherMarket(const QJsonObject &row) const
    {
        const auto market = marketOfNumber(textOf(row, MARKET));
        return market && *market != m_chart.security.market;
    }

    QJsonObject m_fields;
    const AnsweredChart &m_chart;
    CheckedAnswer m_answer{};
    Findings m_findings;
};

CheckedAnswer notJson(const QString &reason)
{
    CheckedAnswer answer{};
    answer.findings.append({AnswerFinding::NotJson, QString(), reason});
    return answer;
}

} // namespace

CheckedAnswer checkAnswer(const QByteArray &payload, const AnsweredChart &chart)
{
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(payload, &error);
    if (!document.isObject()) {
        return notJson(error.error == QJsonParseError::NoError ? QStringLiteral("an array")
                                                               : error.errorString());
    }
    return Checker(document.object(), chart).check();
}

} // namespace Trading
