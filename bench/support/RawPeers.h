#pragma once

#include <string>
#include <sys/types.h>
#include <vector>

/// What the machine allows: the same traffic as over the bus with nothing but sockets. Every peer is a
/// process of its own; it ends when the object that started it goes.
namespace Raw {

/// A descriptor that is closed at the end.
class Descriptor
{
public:
    explicit Descriptor(int number = -1) : m_number(number) {}
    ~Descriptor();
    Descriptor(Descriptor &&other) noexcept : m_number(other.m_number) { other.m_number = -1; }
    Descriptor &operator=(Descriptor &&other) noexcept;
    int number() const { return m_number; }
    void close();

private:
    int m_number;
};

/// A forked process. Start these before the program makes threads or a QCoreApplication.
class Process
{
public:
    template <typename Work>
    explicit Process(Work work) : m_id(fork())
    {
        if (m_id == 0) {
            work();
            exitNow();
        }
    }
    ~Process();
    Process(const Process &) = delete;
    Process &operator=(const Process &) = delete;

private:
    static pid_t fork();
    [[noreturn]] static void exitNow();

    const pid_t m_id;
};

/// Sends `question` bytes and waits for `answer` bytes.
void ask(int descriptor, int question, int answer);

/// Answers every question until the other side goes.
void answerAll(int descriptor, int question, int answer);

/// A pair of connected sockets.
struct Pair
{
    Pair();
    Descriptor near;
    Descriptor far;
};

Descriptor listenAt(const std::string &path);
Descriptor connectTo(const std::string &path);

/// The cheapest broker: whatever one of its two clients sends goes to the other.
void relay(Descriptor listener);

/// The cheapest meeting place: greets every newcomer with a byte for each of his; a message of
/// `size` bytes from the first client goes to all the others. Clients of a crowd send bytes only.
void serveCrowd(Descriptor listener, int clients, int size);

} // namespace Raw
