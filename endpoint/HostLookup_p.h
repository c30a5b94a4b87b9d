#pragma once

#include <QHostInfo>
#include <QObject>
#include <QString>
#include <QTimer>

#include <chrono>
#include <memory>

namespace LocalCommunication {

/// Asks the name server where a broker elsewhere is. Nobody waits for the answer, neither the event loop, as
/// it would in the MQTT library, nor the end of the program; and it is waited for only so long.
class HostLookup : public QObject
{
    Q_OBJECT

public:
    enum class Gives {
        Address, ///< each time another one of the addresses of the name
        Name,    ///< the name that was asked for, which is what certificates hold; the name server has just
                 ///< answered, so asking it again takes no time
    };

    static constexpr std::chrono::milliseconds defaultPatience = std::chrono::seconds(5);

    explicit HostLookup(QObject *parent, std::chrono::milliseconds patience = defaultPatience);
    ~HostLookup() override { cancel(); }

    /// One of the two signals follows, unless cancel() comes first.
    void start(const QString &host, Gives gives);
    void cancel();

Q_SIGNALS:
    /// What to connect to.
    void found(const QString &host);
    void failed(const QString &reason);

private:
    struct Question;

    void giveUp();
    void handleResult(const QHostInfo &result);

    QString m_host;
    Gives m_gives = Gives::Address;
    QTimer m_patience;
    std::shared_ptr<Question> m_question; ///< while its answer is waited for
    int m_found = 0;
};

} // namespace LocalCommunication
