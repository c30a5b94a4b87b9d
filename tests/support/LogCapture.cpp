#include "tests/support/LogCapture.h"

#include <QLoggingCategory>
#include <QMutexLocker>

LogCapture *LogCapture::active = nullptr;

LogCapture::LogCapture(Debug debug)
{
    active = this;
    // NOLINTNEXTLINE(cppcoreguidelines-prefer-member-initializer): not before lines can be taken
    m_previous = qInstallMessageHandler(&LogCapture::collect);
    QLoggingCategory::setFilterRules(debug == Debug::On ? QStringLiteral("default.debug=true")
                                                        : QStringLiteral("default.debug=false"));
}

LogCapture::~LogCapture()
{
    QLoggingCategory::setFilterRules(QString());
    qInstallMessageHandler(m_previous);
    active = nullptr;
}

std::vector<LogCapture::Line> LogCapture::all() const
{
    const QMutexLocker guard(&m_mutex);
    return m_lines;
}

std::vector<QString> LogCapture::lines(QtMsgType type) const
{
    std::vector<QString> found;
    for (const Line &line : all()) {
        if (line.type == type && line.category == QLatin1String("default")) {
            found.push_back(line.text);
        }
    }
    return found;
}

QStringList LogCapture::lines() const
{
    QStringList texts;
    for (const Line &line : all()) {
        texts.append(line.text);
    }
    return texts;
}

void LogCapture::collect(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    const QMutexLocker guard(&active->m_mutex);
    active->m_lines.push_back({type, text, QString::fromLatin1(context.category)});
}
