#pragma once

#include <chrono>
#include <cstddef>
#include <functional>

struct pollfd;

namespace World {

/// Time since a world began.
using Instant = std::chrono::nanoseconds;

/// The clock of this process while a world is simulated: whatever in it asks the system for the time, by a
/// steady clock or by the time of day, sleeps, or waits for a socket, gets the simulated one. So the
/// product's own code runs by it, with nothing put into it for that. There is one, as there is one system;
/// without a world it is the system's own.
class SimulatedClock
{
public:
    /// Waits for sockets in the place of the system; it returns what ::poll() does.
    class Waiter
    {
    public:
        virtual int wait(pollfd *sockets, std::size_t count, std::chrono::milliseconds limit) = 0;

    protected:
        ~Waiter() = default;
    };

    /// Begins at this time of day; `waiter` stays the caller's and is told of every wait until end().
    static void begin(std::chrono::system_clock::time_point timeOfDay, Waiter *waiter);
    /// The system's own clock counts again.
    static void end();

    static Instant now();
    /// Does nothing for what is over.
    static void moveTo(Instant instant);
    /// Whom the system ends when a program of the world ends the module that serves.
    static void setEndServer(std::function<void()> end);
    /// A machine that was suspended: the time of day goes on, and no timer knows of it.
    static void moveTimeOfDay(std::chrono::seconds forward);
};

} // namespace World
