#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

#include "support/uMutex.h"
#include "support/uMutexLock.h"

using KW_MBR::uMutex;
using KW_MBR::uMutexLock;

TEST(uMutexTest, TheHoldingThreadMayLockAgain) {
    // Locked twice on a worker, so that a non-recursive lock fails the test instead of hanging it.
    static uMutex* mutex = new uMutex;  // outlives a worker left stuck by a failure
    static std::atomic<bool> relocked{false};
    std::thread worker([] {
        uMutexLock outer(*mutex);
        uMutexLock inner(*mutex);
        relocked = true;
    });
    for (int i = 0; i < 500 && !relocked.load(); ++i) std::this_thread::sleep_for(std::chrono::milliseconds(10));
    if (!relocked.load()) {
        worker.detach();
        FAIL() << "the second lock by the holding thread never returned";
    }
    worker.join();
}

TEST(uMutexTest, SerialisesOtherThreads) {
    uMutex mutex;
    int counter = 0;  // guarded only by the mutex: a missing lock shows as a wrong total
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&] {
            for (int i = 0; i < 20000; ++i) {
                uMutexLock guard(mutex);
                const int seen = counter;
                std::this_thread::yield();
                counter = seen + 1;
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(80000, counter);
}

TEST(uMutexTest, OtherThreadWaitsWhileHeld) {
    uMutex mutex;
    std::atomic<bool> acquired{false};
    mutex.Lock();
    std::thread other([&] {
        uMutexLock guard(mutex);
        acquired = true;
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_FALSE(acquired.load());
    mutex.Unlock();
    other.join();
    EXPECT_TRUE(acquired.load());
}
