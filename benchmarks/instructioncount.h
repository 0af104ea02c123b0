// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef INSTRUCTIONCOUNT_H
#define INSTRUCTIONCOUNT_H

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <string>

#if __has_include(<valgrind/callgrind.h>)
#include <valgrind/callgrind.h>
#else
#define CALLGRIND_START_INSTRUMENTATION
#define CALLGRIND_STOP_INSTRUMENTATION
#define CALLGRIND_ZERO_STATS
#define CALLGRIND_DUMP_STATS_AT(name) ((void)(name))
#endif

/*!
 * \brief Has callgrind count the instructions between its construction and its end.
 *
 * With VANTIX_BENCH_TURNS=N in the environment every benchmark runs N turns, after
 * one that is not counted; under callgrind each writes a dump named
 * "benchmark|number of operations". benchmarks/instructions reads those.
 */
class InstructionCount
{
public:
    //! Turns that each benchmark runs; 0: as many as its time asks for.
    static int turns()
    {
        static const char *const text = std::getenv("VANTIX_BENCH_TURNS");
        static const int number = text != nullptr ? std::atoi(text) : 0;
        return number;
    }

    //! Registers \a measure as benchmark \a name.
    template<typename Measure>
    static benchmark::internal::Benchmark *registerBenchmark(const std::string &name,
                                                             Measure measure)
    {
        auto *registered = benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State &state) {
            current() = name;
            measure(state);
        });
        if (turns() > 0)
            registered->Iterations(turns());
        return registered;
    }

    //! Runs \a turn once uncounted, if instructions are counted. Stands where the
    //! measured loop begins, of which each turn makes \a operations operations.
    template<typename Turn>
    InstructionCount(const benchmark::State &state, long long operations, Turn turn)
        : m_operations(operations * state.max_iterations)
    {
        if (turns() == 0)
            return;
        CALLGRIND_START_INSTRUMENTATION;
        turn();
        CALLGRIND_ZERO_STATS;
    }
    ~InstructionCount()
    {
        // A variable: the macro keeps its address from one statement to the next.
        const std::string dump = current() + '|' + std::to_string(m_operations);
        if (turns() == 0)
            return;
        CALLGRIND_DUMP_STATS_AT(dump.c_str());
        CALLGRIND_STOP_INSTRUMENTATION;
    }
    InstructionCount(const InstructionCount &) = delete;
    InstructionCount &operator=(const InstructionCount &) = delete;

private:
    static std::string &current()
    {
        static std::string name;
        return name;
    }

    long long m_operations;
};

#endif // INSTRUCTIONCOUNT_H
