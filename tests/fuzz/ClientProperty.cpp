#include "tests/fuzz/FuzzInput.h"
#include "tests/fuzz/Properties.h"
#include "tests/fuzz/ScriptedBroker.h"

#include "endpoint/EndPoint.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QThread>

#include <algorithm>
#include <memory>

using namespace std::chrono_literals;
using LocalCommunication::EndPoint;

namespace {

constexpr int mostActs = 16;
constexpr auto patience = 20ms; ///< for an answer

/// The settings of a terminal whose broker listens at socket().
class Settings
{
public:
    Settings()
    {
        QFile file(m_folder.filePath(QStringLiteral("endpoint.ini")));
        file.open(QIODevice::WriteOnly);
        file.write("[bus]\nurl=unix://" + QFile::encodeName(socket()) + '\n');
    }

    QString folder() const { return m_folder.path(); }
    QString socket() const { return m_folder.filePath(QStringLiteral("bus.sock")); }

private:
    QTemporaryDir m_folder;
};

/// A client that subscribes, sends, asks, leaves and is destroyed, also inside of what it hears.
class Client
{
public:
    Client(FuzzInput input, const Settings &settings, FuzzInput script)
        : m_input(std::move(input)),
          m_folder(settings.folder()),
          m_broker(settings.socket(), std::move(script))
    {
        create();
    }

    void run()
    {
        awaitBus();
        for (int acts = 0; acts < mostActs && !m_input.isEmpty(); ++acts) {
            if (!m_endPoint) {
                create();
            }
            act();
        }
        m_endPoint.reset();
        QCoreApplication::processEvents();
        demand(m_broken.empty(), m_broken);
    }

private:
    void create()
    {
        m_subscribed.clear();
        m_endPoint = std::make_unique<EndPoint>(nullptr);
        m_endPoint->setRequestTimeout(patience);
        EndPoint *const heardOf = m_endPoint.get();
        QObject::connect(heardOf, &EndPoint::messageReceived,
                         [this, heardOf](const QByteArray &topic, const QByteArray &,
                                         const QByteArray &reply) { hear(heardOf, topic, reply); });
        m_endPoint->connect(m_folder);
    }

    /// Nothing is thrown here: the client is in the middle of its work.
    void hear(const EndPoint *from, const QByteArray &topic, const QByteArray &reply)
    {
        if (from != m_endPoint.get()) {
            m_broken = "a client that is gone hears";
        } else if (!m_subscribed.contains(topic)) {
            m_broken = "a client hears what it has not subscribed to: " + topic.toStdString();
        }
        m_reply = reply;
        if (m_depth < 3 && m_input.below(4) == 3) {
            act();
        }
    }

    void act()
    {
        ++m_depth;
        step();
        --m_depth;
    }

    void step()
    {
        switch (m_endPoint ? m_input.below(12) : 11) {
        case 0:
        case 1:
            subscribe();
            break;
        case 2:
            send();
            break;
        case 3:
        case 4:
        case 5:
            ask();
            break;
        case 6:
            m_endPoint->disconnect();
            break;
        case 7:
            m_endPoint->connect(m_folder);
            break;
        case 8:
            m_endPoint.reset();
            break;
        case 9:
            awaitBus();
            break;
        default:
            runEvents();
            break;
        }
    }

    QByteArray topic()
    {
        const char *const topics[] = {"TradeQuery", "TradeNotify", "odd/+#", ""};
        return m_input.oneOf(topics);
    }

    void subscribe()
    {
        const QByteArray topic = this->topic();
        m_subscribed.append(topic);
        m_endPoint->subscribe(m_input.flag() ? "Global" : "screen-1", topic);
    }

    void send()
    {
        const QByteArray channel = m_input.flag() ? m_reply : "Global";
        const QByteArray topic = this->topic();
        m_endPoint->sendMessage(channel, topic, m_input.text(200));
    }

    void ask()
    {
        QElapsedTimer timer;
        timer.start();
        const QByteArray answer = m_endPoint->request("TradeQuery", m_input.text(200));
        if (!answer.isEmpty() && !m_broker.hasAnswered(answer)) {
            m_broken = "a question was answered by nobody: " + answer.toStdString();
        }
        constexpr qint64 farTooLong = 5000; // a machine may be busy
        if (timer.elapsed() > farTooLong) {
            m_broken = "a question was waited for without end";
        }
    }

    void awaitBus()
    {
        constexpr qint64 longest = 50;
        QElapsedTimer timer;
        timer.start();
        while (m_endPoint && !m_endPoint->isConnected() && timer.elapsed() < longest) {
            runEvents();
        }
    }

    static void runEvents()
    {
        QCoreApplication::processEvents();
        QThread::usleep(200);
        QCoreApplication::processEvents();
    }

    FuzzInput m_input;
    const QString m_folder;
    ScriptedBroker m_broker;
    std::unique_ptr<EndPoint> m_endPoint;
    QByteArrayList m_subscribed;
    QByteArray m_reply = "Global";
    int m_depth = 0;
    std::string m_broken;
};

} // namespace

void checkClient(const QByteArray &bytes)
{
    static const Settings settings;
    const int half = std::min(bytes.size() / 2, 200);
    Client(FuzzInput(bytes.left(half)), settings, FuzzInput(bytes.mid(half))).run();
}
