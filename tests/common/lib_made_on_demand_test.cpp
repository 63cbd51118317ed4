#include "common/lib_made_on_demand.h"

#include <gtest/gtest.h>

#include <atomic>
#include <new>
#include <thread>
#include <vector>

namespace
{

using vek::common_lib::lib_made_on_demand_t;

TEST(lib_made_on_demand, threads_that_ask_at_once_get_one_value_and_a_failure_leaves_none)
{
    for (int round = 0; round < 200; ++round) {
        lib_made_on_demand_t<std::vector<int>> value;
        EXPECT_THROW(value.get([]() -> std::vector<int> { throw std::bad_alloc(); }), std::bad_alloc);
        std::atomic<int> waiting = 4;
        const std::vector<int>* seen[4] = {};
        std::vector<std::thread> threads;
        for (const std::vector<int>*& mine : seen)
            threads.emplace_back([&value, &waiting, &mine] {
                for (--waiting; waiting > 0;) {
                }
                mine = &value.get([] { return std::vector<int>(100, 7); });
            });
        for (std::thread& thread : threads)
            thread.join();
        EXPECT_EQ(*seen[0], std::vector<int>(100, 7));
        for (const std::vector<int>* other : seen)
            EXPECT_EQ(other, seen[0]);
    }
}

} // namespace
