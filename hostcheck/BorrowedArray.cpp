#include "hostcheck/BorrowedArray.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdint>

namespace HostCheck {

namespace {

/// Memory that ends with a fence. It is kept for the next array: a terminal that has kept the pointer reads
/// wrong numbers then, as it would without the checker, and nothing worse.
struct Fenced
{
    char *memory = nullptr;
    std::size_t size = 0; ///< up to the fence
    volatile std::sig_atomic_t isTouched = 0;
};

constexpr std::size_t fenceSize = std::size_t{1} << 22U; // 500,000 numbers too many are still found
std::array<Fenced, 2> places;
std::size_t inUse = 0;
using OldAction = struct sigaction;
std::array<OldAction, 2> oldActions; // of SIGSEGV and SIGBUS: systems differ

void setFence(const Fenced &place, int protection)
{
    mprotect(place.memory + place.size, fenceSize, protection);
}

/// In a handler of signals, where little is allowed: note it and open the fence, so that the read goes on.
void openFence(int signal, siginfo_t *info, void *)
{
    const auto address = reinterpret_cast<std::uintptr_t>(info->si_addr);
    for (Fenced &place : places) {
        const auto fence = reinterpret_cast<std::uintptr_t>(place.memory) + place.size;
        if (place.memory != nullptr && address >= fence && address < fence + fenceSize) {
            place.isTouched = 1;
            setFence(place, PROT_READ);
            return;
        }
    }
    sigaction(signal, &oldActions[signal == SIGSEGV ? 0 : 1],
              nullptr); // not ours: it comes again, to the terminal
}

void listen()
{
    struct sigaction action = {};
    action.sa_sigaction = &openFence;
    action.sa_flags = SA_SIGINFO;
    sigaction(SIGSEGV, &action, &oldActions[0]);
    sigaction(SIGBUS, &action, &oldActions[1]);
}

void stopListening()
{
    sigaction(SIGSEGV, &oldActions[0], nullptr);
    sigaction(SIGBUS, &oldActions[1], nullptr);
}

/// Room for so many bytes up to the fence.
void provide(Fenced *place, std::size_t bytes)
{
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    const std::size_t size = (bytes / page + 1) * page;
    if (size > place->size) {
        if (place->memory != nullptr) {
            munmap(place->memory, place->size + fenceSize);
        }
        void *const memory =
            mmap(nullptr, size + fenceSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        place->memory = memory == MAP_FAILED ? nullptr : static_cast<char *>(memory);
        place->size = place->memory == nullptr ? 0 : size;
    }
}

} // namespace

BorrowedArray::BorrowedArray(const double *values, std::size_t count) : m_place(inUse++)
{
    Fenced *const place = m_place < places.size() ? &places[m_place] : nullptr;
    if (place != nullptr) {
        provide(place, count * sizeof(double));
    }
    if (place == nullptr || place->memory == nullptr || (values == nullptr && count > 0)) {
        m_data = values; // lent as it is
        return;
    }
    char *const start = place->memory + place->size - count * sizeof(double);
    std::copy_n(values, count, reinterpret_cast<double *>(start));
    m_data = reinterpret_cast<const double *>(start);
    place->isTouched = 0;
    setFence(*place, PROT_NONE);
    if (m_place == 0) {
        listen();
    }
}

BorrowedArray::~BorrowedArray()
{
    --inUse;
    if (m_place == 0) {
        stopListening();
    }
}

bool BorrowedArray::isReadBeyond() const
{
    return m_place < places.size() && places[m_place].isTouched != 0;
}

} // namespace HostCheck
