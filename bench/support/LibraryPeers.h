#pragma once

#include <functional>
#include <memory>
#include <string>

struct mosquitto;

/// The MQTT library and nothing else, on the same broker: what of a cost is the library's, and what is ours.
namespace Library {

/// A client that waits with poll() and counts what comes.
class Client
{
public:
    /// Connects, and subscribes to one path; returns before the broker has answered.
    Client(const std::string &socketPath, const std::string &path);
    ~Client();
    Client(const Client &) = delete;
    Client &operator=(const Client &) = delete;

    /// Takes what has come and sends what waits.
    void work();
    int descriptor() const;

    /// Whatever comes is answered with so many bytes, where its sender wants them.
    void answerWith(int bytes) { m_answerBytes = bytes; }
    void publish(const std::string &path, const std::string &payload, const std::string &replyPath = {});

    bool isSubscribed() const { return m_isSubscribed; }
    int received() const { return m_received; }

private:
    struct Callbacks;

    const std::string m_path;
    std::unique_ptr<mosquitto, void (*)(mosquitto *)> m_handle;
    bool m_isSubscribed = false;
    int m_received = 0;
    int m_answerBytes = 0;
};

/// Sleeps until something comes, again and again.
void workUntil(Client &client, const std::function<bool()> &condition);

/// Answers on a path until the other end of `lifeline` goes.
void answerAll(const std::string &socketPath, const std::string &path, int bytes, int lifeline);

/// Sends a question and waits for its answer.
void ask(Client &asker, const std::string &path, const std::string &question, const std::string &replyPath);

} // namespace Library
