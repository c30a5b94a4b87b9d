#include "terminal/results/ResultsExport.h"

#include "trading/CsvLine.h"
#include "trading/ModuleVocabulary.h"

namespace Terminal {

namespace {

/// Without any answer. The first one may take a while: everything is reckoned.
constexpr std::chrono::seconds longestSilence(30);

QStringList headerOf(ResultGroup group)
{
    QStringList keys;
    for (const ResultField field : Trading::fieldsOf(group)) {
        keys.append(QLatin1String(Trading::columnOf(field).key));
    }
    return keys << QLatin1String(Trading::columnOf(ResultField::Method).key);
}

} // namespace

ResultsExport::ResultsExport(const ResultsWish &wish, const QString &path, QObject *parent)
    : QObject(parent),
      m_wish(wish),
      m_file(path),
      m_desk([this] {
          return RowsAsked{m_wish, m_next, Trading::mostResultRows};
      })
{
    m_patience.setSingleShot(true);
    m_patience.setInterval(longestSilence);
    connect(&m_patience, &QTimer::timeout, this, [this] { end(tr("the trading module does not answer")); });
    connect(&m_desk, &ResultsDesk::came, this, &ResultsExport::take);
    connect(&m_desk, &ResultsDesk::refused, this, &ResultsExport::end);
}

void ResultsExport::start(const QString &address)
{
    if (!m_file.open(QIODevice::WriteOnly)) {
        end(m_file.errorString());
        return;
    }
    m_patience.start();
    m_desk.start(address);
    m_desk.watch(true);
}

/// Rows of two states of the ledger are not put into one file.
void ResultsExport::begin()
{
    m_next = 0;
    m_file.seek(0);
    m_file.resize(0);
    m_file.write(Trading::csvLine(headerOf(m_wish.group)).toUtf8());
}

void ResultsExport::take(const ResultsPart &part)
{
    m_patience.start();
    if (m_isOver) {
        return;
    }
    const bool isOther = part.state != m_state;
    if (isOther) {
        m_state = part.state;
        begin();
    }
    if (part.first == m_next) {
        for (const ResultRow &row : part.rows) {
            m_file.write(Trading::csvLine(row + QStringList(part.costMethod)).toUtf8());
        }
        m_next += static_cast<qint64>(part.rows.size());
    }
    if (m_next >= part.count) {
        end(m_file.commit() ? QString() : m_file.errorString());
    } else {
        m_desk.ask();
    }
}

void ResultsExport::end(const QString &error)
{
    if (!m_isOver) {
        m_isOver = true;
        m_patience.stop();
        m_desk.watch(false);
        Q_EMIT finished(error);
    }
}

} // namespace Terminal
