#pragma once

#include "tests/fuzz/FuzzInput.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QString>

#include <mutex>
#include <set>
#include <thread>

/// A broker on a Unix socket that does as its script says: answers, refuses, sends what nobody asked for,
/// splits its packets, says nothing, goes away. Each packet of it has the form of MQTT 5, for what has none
/// ends the MQTT library with an assertion of its own; what the packets say, and when, is as hostile as the
/// script.
class ScriptedBroker
{
public:
    /// Listens until it goes, in a thread of its own.
    ScriptedBroker(const QString &socket, FuzzInput script);
    ~ScriptedBroker();
    Q_DISABLE_COPY_MOVE(ScriptedBroker)

    /// True when it has sent this payload as an answer.
    bool hasAnswered(const QByteArray &payload);

private:
    struct Packet
    {
        int type = 0; ///< of MQTT; 0 for none: the client is gone, or this object goes
        int flags = 0;
        QByteArray body;
    };
    struct Question
    {
        QByteArray path;
        QByteArray correlation;
    };

    void run();
    void serve();
    bool isThere(int descriptor) const;
    Packet read();
    bool readAll(char *bytes, int count);
    void handle(const Packet &packet);
    void greet();
    void confirmSubscription(const QByteArray &body);
    void takeMessage(const Packet &packet);
    void answer(const Question &question);
    void sayWhatNobodyAsked();
    void sendWithReceipt(int quality);
    void publish(const QByteArray &path, const QByteArray &payload, const QByteArray &correlation = {});
    void send(int header, const QByteArray &body);
    void hangUp();

    FuzzInput m_script;
    int m_listening = -1;
    int m_client = -1;
    int m_goes[2] = {-1, -1}; ///< a pipe whose end tells the thread that this object goes
    QByteArrayList m_paths;   ///< subscribed
    Question m_owed;          ///< a question that is still to be answered
    std::mutex m_mutex;
    std::set<QByteArray> m_answers; ///< under the mutex
    std::thread m_thread;
};
