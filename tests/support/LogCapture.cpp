#include "tests/support/LogCapture.h"

#include <QLoggingCategory>

LogCapture *LogCapture::s_active = nullptr;

LogCapture::LogCapture(Debug debug) : m_previous(qInstallMessageHandler(&LogCapture::collect))
{
    s_active = this;
    QLoggingCategory::setFilterRules(debug == Debug::On ? QStringLiteral("default.debug=true")
                                                        : QStringLiteral("default.debug=false"));
}

LogCapture::~LogCapture()
{
    QLoggingCategory::setFilterRules(QString());
    qInstallMessageHandler(m_previous);
    s_active = nullptr;
}

std::vector<QString> LogCapture::lines(QtMsgType type) const
{
    std::vector<QString> found;
    for (const Line &line : m_lines) {
        if (line.type == type && line.category == QLatin1String("default")) {
            found.push_back(line.text);
        }
    }
    return found;
}

void LogCapture::collect(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    s_active->m_lines.push_back({type, text, QString::fromLatin1(context.category)});
}
