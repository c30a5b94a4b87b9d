#include "bench/support/RawPeers.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace Raw {

namespace {

using Buffer = std::array<char, 65536>;

sockaddr_un addressOf(const std::string &path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    return address;
}

bool readAll(int descriptor, char *to, int size)
{
    while (size > 0) {
        const ssize_t count = ::read(descriptor, to, static_cast<std::size_t>(size));
        if (count <= 0) {
            return false;
        }
        size -= static_cast<int>(count);
    }
    return true;
}

bool writeAll(int descriptor, const char *from, int size)
{
    while (size > 0) {
        const ssize_t count = ::write(descriptor, from, static_cast<std::size_t>(size));
        if (count <= 0) {
            return false;
        }
        from += count;
        size -= static_cast<int>(count);
    }
    return true;
}

bool pass(int from, int to)
{
    Buffer buffer;
    const ssize_t count = ::read(from, buffer.data(), buffer.size());
    return count > 0 && writeAll(to, buffer.data(), static_cast<int>(count));
}

} // namespace

Descriptor::~Descriptor()
{
    close();
}

Descriptor &Descriptor::operator=(Descriptor &&other) noexcept
{
    std::swap(m_number, other.m_number);
    return *this;
}

void Descriptor::close()
{
    if (m_number >= 0) {
        ::close(m_number);
        m_number = -1;
    }
}

pid_t Process::fork()
{
    return ::fork();
}

void Process::exitNow()
{
    ::_exit(EXIT_SUCCESS);
}

Process::~Process()
{
    ::kill(m_id, SIGKILL);
    ::waitpid(m_id, nullptr, 0);
}

void ask(int descriptor, int question, int answer)
{
    static Buffer buffer;
    if (!writeAll(descriptor, buffer.data(), question) || !readAll(descriptor, buffer.data(), answer)) {
        std::abort(); // a figure of a broken run would be worse than none
    }
}

void answerAll(int descriptor, int question, int answer)
{
    Buffer buffer{};
    while (readAll(descriptor, buffer.data(), question) && writeAll(descriptor, buffer.data(), answer)) {
    }
}

Pair::Pair()
{
    std::array<int, 2> numbers{-1, -1};
    ::socketpair(AF_UNIX, SOCK_STREAM, 0, numbers.data());
    near = Descriptor(numbers[0]);
    far = Descriptor(numbers[1]);
}

Descriptor listenAt(const std::string &path)
{
    Descriptor listener(::socket(AF_UNIX, SOCK_STREAM, 0));
    const sockaddr_un address = addressOf(path);
    ::bind(listener.number(), reinterpret_cast<const sockaddr *>(&address), sizeof address);
    ::listen(listener.number(), SOMAXCONN);
    return listener;
}

Descriptor connectTo(const std::string &path)
{
    Descriptor socket(::socket(AF_UNIX, SOCK_STREAM, 0));
    const sockaddr_un address = addressOf(path);
    if (::connect(socket.number(), reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0) {
        std::abort();
    }
    return socket;
}

void relay(Descriptor listener)
{
    const Descriptor first(::accept(listener.number(), nullptr, nullptr));
    const Descriptor second(::accept(listener.number(), nullptr, nullptr));
    std::array<pollfd, 2> clients{{{first.number(), POLLIN, 0}, {second.number(), POLLIN, 0}}};
    while (::poll(clients.data(), clients.size(), -1) > 0) {
        for (std::size_t i = 0; i < clients.size(); ++i) {
            if (clients[i].revents != 0 && !pass(clients[i].fd, clients[1 - i].fd)) {
                return;
            }
        }
    }
}

void serveCrowd(Descriptor listener, int clients, int size)
{
    std::vector<Descriptor> crowd;
    for (int i = 0; i < clients; ++i) {
        crowd.emplace_back(::accept(listener.number(), nullptr, nullptr));
        char greeting = 0;
        if (!readAll(crowd.back().number(), &greeting, 1) || !writeAll(crowd.back().number(), &greeting, 1)) {
            return;
        }
    }
    std::vector<char> message(static_cast<std::size_t>(size));
    while (readAll(crowd.front().number(), message.data(), size)) {
        for (std::size_t i = 1; i < crowd.size(); ++i) {
            writeAll(crowd[i].number(), message.data(), size);
        }
    }
}

} // namespace Raw
