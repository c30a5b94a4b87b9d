#include "tests/support/HangingNames.h"

#include <chrono>
#include <condition_variable>
#include <cstring>
#include <mutex>

#include <dlfcn.h>
#include <netdb.h>

namespace {

struct NameServer
{
    std::mutex mutex;
    std::condition_variable changed;
    bool hangs = false;
    int questions = 0;
    int answered = 0; ///< of these, the first
};

/// Never destroyed: a thread may still ask when the program ends.
NameServer &nameServer()
{
    static auto *const server = new NameServer;
    return *server;
}

/// A test that waits for it where nobody should is to fail, and not to last for ever.
constexpr std::chrono::seconds longestTest{20};

/// False when no answer comes.
bool ask()
{
    NameServer &server = nameServer();
    std::unique_lock<std::mutex> lock(server.mutex);
    if (++server.questions <= server.answered) {
        return true;
    }
    server.changed.wait_for(lock, longestTest, [&server] { return !server.hangs; });
    return false;
}

} // namespace

HangingNames::HangingNames(int answered)
{
    const std::lock_guard<std::mutex> lock(nameServer().mutex);
    nameServer().hangs = true;
    nameServer().questions = 0;
    nameServer().answered = answered;
}

HangingNames::~HangingNames()
{
    {
        const std::lock_guard<std::mutex> lock(nameServer().mutex);
        nameServer().hangs = false;
    }
    nameServer().changed.notify_all();
}

int HangingNames::questions()
{
    const std::lock_guard<std::mutex> lock(nameServer().mutex);
    return nameServer().questions;
}

/// In the place of the C library's, for all libraries of the test program.
extern "C" __attribute__((visibility("default"))) int getaddrinfo(const char *node, const char *service,
                                                                  const addrinfo *hints, addrinfo **result)
{
    using Function = int (*)(const char *, const char *, const addrinfo *, addrinfo **);
    static const auto real = reinterpret_cast<Function>(::dlsym(RTLD_NEXT, "getaddrinfo"));
    if (node != nullptr && std::strcmp(node, HangingNames::host) == 0) {
        return ask() ? real("127.0.0.1", service, hints, result) : EAI_NONAME;
    }
    return real(node, service, hints, result);
}
