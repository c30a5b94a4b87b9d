#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <vector>

/// Times work beside its floor: the least that the machine must do for the same result. Both run in
/// turn, so that a change of the machine's speed meets both; the medians and their ratio are reported.
class Paired
{
public:
    /// With `repeats` both are done that often in a row: what is shorter than a look at the clock.
    explicit Paired(benchmark::State &state, int repeats = 1) : m_state(state), m_repeats(repeats) {}

    template <class Floor, class Work>
    void run(Floor &&floor, Work &&work)
    {
        for (auto _ : m_state) {
            m_floors.push_back(seconds(floor));
            const double spent = seconds(work);
            m_works.push_back(spent);
            m_state.SetIterationTime(spent * m_repeats);
        }
        const double floorMedian = median(m_floors);
        m_state.counters["floor_us"] = floorMedian * 1e6;
        m_state.counters["median_us"] = median(m_works) * 1e6;
        m_state.counters["ratio"] = median(m_works) / floorMedian;
    }

private:
    /// Of one time.
    template <class Work>
    double seconds(Work &work) const
    {
        const auto start = std::chrono::steady_clock::now();
        for (int i = 0; i < m_repeats; ++i) {
            work();
        }
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count() / m_repeats;
    }

    static double median(std::vector<double> values)
    {
        const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
        std::nth_element(values.begin(), middle, values.end());
        return *middle;
    }

    benchmark::State &m_state;
    const int m_repeats;
    std::vector<double> m_floors;
    std::vector<double> m_works;
};
