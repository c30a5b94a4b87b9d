#include "tests/e2e/WireClients.h"

#include "tests/support/TestBroker.h"

#include <gtest/gtest.h>

#include <QStandardPaths>

#include <algorithm>

WireClients::WireClients(const TestBroker &broker) : m_broker(broker) {}

WireClients::~WireClients()
{
    m_ear.kill();
    m_ear.waitForFinished();
}

bool WireClients::areInstalled()
{
    const auto programs = {"mosquitto_pub", "mosquitto_rr", "mosquitto_sub"};
    return std::none_of(programs.begin(), programs.end(), [](const char *program) {
        return QStandardPaths::findExecutable(QLatin1String(program)).isEmpty();
    });
}

void WireClients::listen()
{
    m_ear.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_ear.start(QStringLiteral("mosquitto_sub"),
                toBroker() + QStringList{QStringLiteral("-v"), QStringLiteral("-t"), QStringLiteral("#")});
    ASSERT_TRUE(m_ear.waitForStarted());
    // The client does not tell when it listens: speak until it hears.
    ASSERT_TRUE(waitUntil([this] {
        say(QStringLiteral("Test/Hello"), "hello");
        return m_ear.canReadLine();
    }));
}

QByteArrayList WireClients::takeHeard()
{
    QByteArrayList lines;
    while (m_ear.canReadLine()) {
        lines.append(m_ear.readLine().trimmed());
    }
    return lines;
}

QByteArray WireClients::ask(const QString &path, const QByteArray &question) const
{
    QProcess asker;
    asker.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    asker.start(QStringLiteral("mosquitto_rr"),
                toBroker() + QStringList{QStringLiteral("-t"), path, QStringLiteral("-e"),
                                         QStringLiteral("my/answers"), QStringLiteral("-W"),
                                         QStringLiteral("1"), QStringLiteral("-m"),
                                         QString::fromUtf8(question)});
    EXPECT_TRUE(asker.waitForFinished());
    return asker.readAllStandardOutput().trimmed();
}

void WireClients::publish(const QString &path, const QByteArray &input, const char *mode) const
{
    QProcess mouth;
    mouth.setProcessChannelMode(QProcess::ForwardedChannels);
    mouth.start(QStringLiteral("mosquitto_pub"),
                toBroker() + QStringList{QStringLiteral("-t"), path, QLatin1String(mode)});
    mouth.write(input);
    mouth.closeWriteChannel();
    EXPECT_TRUE(mouth.waitForFinished());
    EXPECT_EQ(mouth.exitCode(), 0);
}

QStringList WireClients::toBroker() const
{
    return {QStringLiteral("--unix"), m_broker.socketPath(), QStringLiteral("-V"), QStringLiteral("5")};
}
