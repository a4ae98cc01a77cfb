// SPDX-License-Identifier: Apache-2.0
#include <support/threadpool.h>

#include <opencv2/core.hpp>
#include <opencv2/core/parallel/parallel_backend.hpp>

#include <algorithm>
#include <memory>
#include <thread>
#include <vector>

namespace {

class StandardThreads : public cv::parallel::ParallelForAPI
{
public:
    explicit StandardThreads(int threads) : m_threads(threads) {}

    void parallel_for(int tasks, FN_parallel_for_body_cb_t body, void* data) override
    {
        std::vector<std::thread> threads;
        const int share = (tasks + m_threads - 1) / m_threads;
        for (int begin = 0; begin < tasks; begin += share)
            threads.emplace_back(body, begin, std::min(begin + share, tasks), data);
        for (std::thread& thread : threads)
            thread.join();
    }
    int getThreadNum() const override { return 0; }
    int getNumThreads() const override { return m_threads; }
    int setNumThreads(int threads) override { return std::exchange(m_threads, threads); }
    const char* getName() const override { return "standard threads"; }

private:
    int m_threads;
};

} // namespace

void TestSupport::useThreads(int threads)
{
    cv::parallel::setParallelForBackend(std::make_shared<StandardThreads>(threads), true);
}
