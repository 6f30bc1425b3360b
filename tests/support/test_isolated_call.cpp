// Work run in a child process: every way it can end, and a result larger
// than a pipe holds.
#include <gtest/gtest.h>

#include <csignal>
#include <new>
#include <stdexcept>
#include <thread>
#include <vector>

#include "support/isolated_call.h"

using namespace hxl;

TEST(IsolatedCall, EveryEndIsReportedAndTheParentLivesOn) {
    std::string out = "stale";
    constexpr std::size_t kMemory = std::size_t(1) << 30;
    // 5 MB with every byte value: nothing lost or reordered through the pipe.
    std::string big(5'000'000, '\0');
    for (std::size_t i = 0; i < big.size(); ++i) big[i] = static_cast<char>((i * 7919) % 251);
    EXPECT_EQ(Run_Isolated([&] { return big; }, out, 10.0, kMemory), Isolated_End::Done);
    EXPECT_EQ(out, big);

    EXPECT_EQ(Run_Isolated([] { return std::string(); }, out, 10.0, kMemory), Isolated_End::Done);
    EXPECT_TRUE(out.empty());

    auto crash = []() -> std::string {
        std::raise(SIGSEGV);
        return "not reached";
    };
    EXPECT_EQ(Run_Isolated(crash, out, 10.0, kMemory), Isolated_End::Crashed);
    EXPECT_TRUE(out.empty());

    auto no_memory = []() -> std::string { throw std::bad_alloc(); };
    EXPECT_EQ(Run_Isolated(no_memory, out, 10.0, kMemory), Isolated_End::Out_Of_Memory);
    auto throws = []() -> std::string { throw std::runtime_error("x"); };
    EXPECT_EQ(Run_Isolated(throws, out, 10.0, kMemory), Isolated_End::Failed);

    // A loop is stopped at the time allowed; what it wrote is not taken as a result.
    auto loops = []() -> std::string {
        for (;;) std::this_thread::sleep_for(std::chrono::milliseconds(10));
    };
    EXPECT_EQ(Run_Isolated(loops, out, 0.3, kMemory), Isolated_End::Timed_Out);
    EXPECT_TRUE(out.empty());
}

TEST(IsolatedCall, ChildrenOfSeveralThreadsKeepTheirOwnResults) {
    std::vector<std::string> got(4);
    std::vector<Isolated_End> ends(4, Isolated_End::Not_Started);
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t)
        threads.emplace_back([&, t] {
            ends[t] = Run_Isolated([t] { return std::string(100'000 + t, static_cast<char>('a' + t)); }, got[t], 20.0,
                                   std::size_t(1) << 30);
        });
    for (auto& th : threads) th.join();
    for (int t = 0; t < 4; ++t) {
        EXPECT_EQ(ends[t], Isolated_End::Done);
        EXPECT_EQ(got[t], std::string(100'000 + t, static_cast<char>('a' + t)));
    }
}
