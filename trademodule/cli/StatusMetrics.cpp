#include "trademodule/cli/StatusMetrics.h"

#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"
#include "trademodule/cli/StatusWords.h"

#include <QDateTime>
#include <QPair>
#include <QSaveFile>

namespace TradeModule {

using Trading::ModuleStatus;

namespace {

using Labels = QVector<QPair<const char *, QString>>;

QByteArray quoted(const QString &text)
{
    QByteArray value = text.toUtf8();
    value.replace('\\', "\\\\").replace('"', "\\\"").replace('\n', "\\n");
    return '"' + value + '"';
}

/// Writes metric after metric, each with what it means.
class MetricsText
{
public:
    explicit MetricsText(const QString &bus) : m_bus(quoted(bus)) {}

    void begin(const char *name, const char *type, const char *meaning)
    {
        m_name = QByteArray("trademodule_") + name;
        m_text += "# HELP " + m_name + ' ' + meaning + "\n# TYPE " + m_name + ' ' + type + '\n';
    }
    void add(double value, const Labels &labels = {})
    {
        m_text += m_name + "{bus=" + m_bus;
        for (const auto &label : labels) {
            m_text += QByteArray(",") + label.first + '=' + quoted(label.second);
        }
        m_text += "} " + QByteArray::number(value, 'g', mostDigits) + '\n';
    }
    void gauge(const char *name, const char *meaning, double value, const Labels &labels = {})
    {
        begin(name, "gauge", meaning);
        add(value, labels);
    }
    void counter(const char *name, const char *meaning, double value)
    {
        begin(name, "counter", meaning);
        add(value);
    }

    QByteArray text() const { return m_text; }

private:
    static constexpr int mostDigits = 15;

    const QByteArray m_bus;
    QByteArray m_name;
    QByteArray m_text;
};

double secondsSinceEpoch(const QDateTime &time)
{
    return static_cast<double>(time.toSecsSinceEpoch());
}

double secondsOf(std::chrono::microseconds time)
{
    return std::chrono::duration<double>(time).count();
}

void addStanding(Standing standing, MetricsText *text)
{
    text->gauge("up", "1 while a trading module serves and can use its ledger.",
                standing == Standing::Serving ? 1 : 0);
    text->begin("standing", "gauge", "1 for how things stand on the bus.");
    for (const StandingWords &words : allStandings()) {
        text->add(words.standing == standing ? 1 : 0, {{"standing", QLatin1String(words.word)}});
    }
}

void addModule(const ModuleStatus &status, MetricsText *text)
{
    const Trading::TradePresence &module = status.module;
    text->gauge("info", "Who serves.", 1,
                {{"version", module.version},
                 {"host", module.host},
                 {"ledger", module.ledger},
                 {"instance_id", module.instance}});
    text->gauge("start_time_seconds", "When it began to serve.", secondsSinceEpoch(module.since));
    text->gauge("fence", "Raised by each module that takes the ledger over.",
                static_cast<double>(module.fence));
    text->gauge("readonly", "1 while it takes no orders.", module.isReadOnly ? 1 : 0);
}

void addMarket(const ModuleStatus &status, MetricsText *text)
{
    if (status.openOrders >= 0) {
        text->gauge("open_orders", "Orders that may still be dealt.", static_cast<double>(status.openOrders));
    }
    text->counter("quotes_total", "Quotes that were heard.", static_cast<double>(status.quotes));
    text->gauge("quotes_waiting", "Quotes that wait for the ledger.",
                static_cast<double>(status.waitingQuotes));
    if (status.lastQuote) {
        text->gauge("last_quote_time_seconds", "When the last quote was heard.",
                    secondsSinceEpoch(status.lastQuote->heard));
    }
}

struct AnswerMetric
{
    const char *name;
    const char *type;
    const char *meaning;
    double (*value)(const ModuleStatus::Answers &answers);
};

void addAnswers(const QVector<ModuleStatus::Answers> &answers, MetricsText *text)
{
    using Answers = ModuleStatus::Answers;
    static constexpr AnswerMetric metrics[] = {
        {"answers_total", "counter", "Answers by command.",
         [](const Answers &row) { return static_cast<double>(row.count); }},
        {"answer_failures_total", "counter", "Refusals by command.",
         [](const Answers &row) { return static_cast<double>(row.failures); }},
        {"answer_seconds_total", "counter", "Time from question to answer within the module.",
         [](const Answers &row) { return secondsOf(row.taken); }},
        {"answer_seconds_max", "gauge", "The longest such time since it serves.",
         [](const Answers &row) { return secondsOf(row.longest); }},
    };
    for (const AnswerMetric &metric : metrics) {
        text->begin(metric.name, metric.type, metric.meaning);
        for (const Answers &row : answers) {
            text->add(metric.value(row), {{"command", row.command}});
        }
    }
}

} // namespace

QByteArray metricsOf(const BusStatus &found, const QString &bus)
{
    MetricsText text(bus);
    addStanding(found.standing, &text);
    if (found.status) {
        addModule(*found.status, &text);
    }
    if (found.status && found.isTold) {
        addMarket(*found.status, &text);
        addAnswers(found.status->answers, &text);
    }
    return text.text();
}

void writeMetrics(const QString &path, const QByteArray &metrics)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(metrics) != metrics.size() || !file.commit()) {
        throw Error(translated("%1 cannot be written: %2").arg(path, reasonOf(file)));
    }
}

} // namespace TradeModule
