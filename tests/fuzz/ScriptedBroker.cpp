#include "tests/fuzz/ScriptedBroker.h"

#include <QFile>

#include <algorithm>
#include <cstring>
#include <utility>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

enum PacketType { Connect = 1, Publish = 3, Subscribe = 8, Ping = 12, Goodbye = 14 };

constexpr int connectAck = 0x20;
constexpr int publishHeader = 0x30;
constexpr int publishAck = 0x40;
constexpr int subscribeAck = 0x90;
constexpr int pingAnswer = 0xD0;
constexpr int goodbyeHeader = 0xE0;
constexpr char refused = '\x87';

constexpr char responseTopic = 0x08; // properties of a message
constexpr char correlationData = 0x09;

QByteArray twoBytes(int number)
{
    return QByteArray(1, static_cast<char>(number >> 8)) + static_cast<char>(number);
}

QByteArray text(const QByteArray &bytes)
{
    return twoBytes(bytes.size()) + bytes;
}

/// Seven bits a byte, the lowest first.
QByteArray size(int number)
{
    QByteArray bytes;
    do {
        bytes += static_cast<char>((number & 0x7F) | (number > 0x7F ? 0x80 : 0));
        number >>= 7;
    } while (number > 0);
    return bytes;
}

/// Reads what the MQTT library wrote, which is well formed.
class Reader
{
public:
    explicit Reader(QByteArray bytes) : m_bytes(std::move(bytes)) {}

    int byte() { return m_at < m_bytes.size() ? static_cast<unsigned char>(m_bytes[m_at++]) : 0; }
    int number()
    {
        const int high = byte();
        return high << 8 | byte();
    }
    QByteArray text() { return take(number()); }
    QByteArray take(int count)
    {
        const QByteArray taken = m_bytes.mid(m_at, count);
        m_at += taken.size();
        return taken;
    }
    bool isAtEnd() const { return m_at >= m_bytes.size(); }

private:
    QByteArray m_bytes;
    int m_at = 0;
};

int listenOn(const QString &socket)
{
    const QByteArray path = QFile::encodeName(socket);
    ::unlink(path.constData());
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path.constData(), sizeof address.sun_path - 1);
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM, 0);
    ::bind(descriptor, reinterpret_cast<const sockaddr *>(&address), sizeof address);
    ::listen(descriptor, 5);
    return descriptor;
}

} // namespace

ScriptedBroker::ScriptedBroker(const QString &socket, FuzzInput script)
    : m_script(std::move(script)),
      m_listening(listenOn(socket))
{
    if (::pipe(m_goes) == 0) {
        m_thread = std::thread([this] { run(); });
    }
}

ScriptedBroker::~ScriptedBroker()
{
    ::close(m_goes[1]);
    m_thread.join();
    ::close(m_goes[0]);
    ::close(m_listening);
}

bool ScriptedBroker::hasAnswered(const QByteArray &payload)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_answers.count(payload) > 0;
}

/// Waits until there is something to read; false when this object goes.
bool ScriptedBroker::isThere(int descriptor) const
{
    pollfd entries[] = {{descriptor, POLLIN, 0}, {m_goes[0], POLLIN, 0}};
    return ::poll(entries, 2, -1) > 0 && entries[1].revents == 0;
}

void ScriptedBroker::run()
{
    while (isThere(m_listening)) {
        m_client = ::accept(m_listening, nullptr, nullptr);
        serve();
        hangUp();
    }
}

void ScriptedBroker::serve()
{
    m_paths.clear();
    while (m_client >= 0) {
        const Packet packet = read();
        if (packet.type == 0 || packet.type == Goodbye) {
            return;
        }
        handle(packet);
        sayWhatNobodyAsked();
    }
}

void ScriptedBroker::hangUp()
{
    if (m_client >= 0) {
        ::close(m_client);
        m_client = -1;
    }
}

bool ScriptedBroker::readAll(char *bytes, int count)
{
    while (count > 0) {
        const ssize_t got =
            isThere(m_client) ? ::recv(m_client, bytes, static_cast<std::size_t>(count), 0) : 0;
        if (got <= 0) {
            return false;
        }
        bytes += got;
        count -= static_cast<int>(got);
    }
    return true;
}

ScriptedBroker::Packet ScriptedBroker::read()
{
    unsigned char byte = 0;
    if (!readAll(reinterpret_cast<char *>(&byte), 1)) {
        return {};
    }
    Packet packet{byte >> 4, byte & 0x0F, {}};
    int length = 0;
    int shift = 0;
    do {
        if (!readAll(reinterpret_cast<char *>(&byte), 1)) {
            return {};
        }
        length |= (byte & 0x7F) << shift;
        shift += 7;
    } while ((byte & 0x80) != 0);
    packet.body.resize(length);
    return readAll(packet.body.data(), length) ? packet : Packet();
}

void ScriptedBroker::handle(const Packet &packet)
{
    switch (packet.type) {
    case Connect:
        greet();
        break;
    case Subscribe:
        confirmSubscription(packet.body);
        break;
    case Publish:
        takeMessage(packet);
        break;
    case Ping:
        send(pingAnswer, {});
        break;
    default: // receipts of what it was sent
        break;
    }
}

void ScriptedBroker::greet()
{
    const QByteArray welcome = QByteArray(3, '\0');
    switch (m_script.below(16)) {
    case 15:
        break; // nothing
    case 14:
        hangUp();
        break;
    case 13:
        send(connectAck, QByteArray(1, '\0') + refused + QByteArray(1, '\0'));
        break;
    case 12:
        send(connectAck, welcome);
        send(connectAck, welcome);
        break;
    case 11:
        send(connectAck, QByteArray("\0\0\2\x25\0", 5)); // keeps no messages
        break;
    default:
        send(connectAck, welcome);
        break;
    }
}

void ScriptedBroker::confirmSubscription(const QByteArray &body)
{
    Reader reader(body);
    const int packet = reader.number();
    reader.take(reader.byte()); // properties, fewer than 128 bytes
    QByteArray granted;
    while (!reader.isAtEnd()) {
        m_paths.append(reader.text());
        reader.byte(); // its options
        granted += m_script.below(8) == 7 ? refused : '\0';
    }
    switch (m_script.below(8)) {
    case 7:
        break;
    case 6:
        send(subscribeAck, twoBytes(packet + 1) + '\0' + granted);
        break;
    case 5:
        send(subscribeAck, twoBytes(packet) + '\0' + granted.left(1));
        break;
    case 4:
        send(subscribeAck, twoBytes(packet) + '\0' + granted + granted);
        break;
    default:
        send(subscribeAck, twoBytes(packet) + '\0' + granted);
        break;
    }
}

void ScriptedBroker::takeMessage(const Packet &packet)
{
    Reader reader(packet.body);
    reader.text(); // its path
    const int quality = packet.flags >> 1 & 3;
    const int number = quality > 0 ? reader.number() : 0;
    if (quality > 0 && m_script.below(4) < 3) {
        const char reason = m_script.below(4) == 3 ? refused : '\0';
        send(publishAck, twoBytes(number + m_script.below(2)) + reason + '\0');
    }
    int bytes = reader.byte();
    bytes = bytes < 0x80 ? bytes : (bytes & 0x7F) + reader.byte() * 0x80;
    Reader properties(reader.take(bytes));
    Question question;
    while (!properties.isAtEnd()) {
        switch (properties.byte()) {
        case responseTopic:
            question.path = properties.text();
            break;
        case correlationData:
            question.correlation = properties.text();
            break;
        default:
            return; // a message with others is no question
        }
    }
    if (!question.path.isEmpty()) {
        answer(question);
    }
}

void ScriptedBroker::answer(const Question &question)
{
    const QByteArray payload = "answer " + QByteArray::number(m_script.below(4));
    const Question late = std::exchange(m_owed, question);
    switch (m_script.below(8)) {
    case 7:
        break; // perhaps with the next one
    case 6:
        publish(late.path, payload, late.correlation);
        break;
    case 5:
        publish(question.path, payload, "none of yours");
        break;
    case 4:
        publish(question.path, payload);
        break;
    case 3:
        publish(question.path, payload, question.correlation);
        publish(question.path, "another " + payload, question.correlation);
        break;
    default:
        publish(question.path, payload, question.correlation);
        break;
    }
}

void ScriptedBroker::sayWhatNobodyAsked()
{
    const QByteArray subscribed = m_paths.value(m_script.below(8));
    switch (m_script.below(16)) {
    case 15:
        hangUp();
        break;
    case 14:
        send(goodbyeHeader, QByteArray(1, refused) + '\0');
        break;
    case 13:
        publish("nobody/asked", "x");
        break;
    case 12:
        send(0x62, twoBytes(7)); // the end of a message that never began
        break;
    case 11:
        send(publishAck, twoBytes(m_script.below(300)));
        break;
    case 10: // it wants receipts
        sendWithReceipt(m_script.flag() ? 2 : 4);
        break;
    case 9:
        for (int i = 0; i < 200; ++i) {
            publish(subscribed, QByteArray(m_script.below(2000), 'z'));
        }
        break;
    case 8:
        publish(m_paths.isEmpty() ? QByteArray() : m_paths.last(), "x", m_script.text(20));
        break;
    case 7:
        publish(subscribed, m_script.text(200));
        break;
    default:
        break;
    }
}

void ScriptedBroker::sendWithReceipt(int quality)
{
    send(publishHeader | quality, text("Global/TradeNotify") + twoBytes(1 + m_script.below(3)) + '\0' + 'y');
}

/// Nothing without a path: a library would take it for a fault of form.
void ScriptedBroker::publish(const QByteArray &path, const QByteArray &payload, const QByteArray &correlation)
{
    if (path.isEmpty()) {
        return;
    }
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_answers.insert(payload);
    }
    const QByteArray properties = correlation.isEmpty() ? QByteArray() : correlationData + text(correlation);
    send(publishHeader, text(path) + size(properties.size()) + properties + payload);
}

/// All at once, or in two parts between which the client may read; the second part may never come.
void ScriptedBroker::send(int header, const QByteArray &body)
{
    const QByteArray bytes = static_cast<char>(header) + size(body.size()) + body;
    const int choice = m_script.below(32);
    const int first = choice < 28 ? bytes.size() : m_script.below(bytes.size());
    ::send(m_client, bytes.constData(), static_cast<std::size_t>(first), MSG_NOSIGNAL);
    if (first < bytes.size()) {
        std::this_thread::yield();
        choice == 31 ? hangUp() : static_cast<void>(0);
        ::send(m_client, bytes.constData() + first, static_cast<std::size_t>(bytes.size() - first),
               MSG_NOSIGNAL);
    }
}
