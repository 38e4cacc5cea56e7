// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/disk/RunAside.h"

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

namespace KODMS::Services {

namespace {

constexpr std::chrono::milliseconds Patience(100);

struct Running {
    std::function<void()> work;
    std::mutex mutex;
    std::condition_variable changed;
    bool isDone = false;

    void run()
    {
        std::exchange(work, nullptr)(); // and lets go of whatever it held
        const std::lock_guard<std::mutex> guard(mutex);
        isDone = true;
        changed.notify_all();
    }
};

} // namespace

void runAside(std::function<void()> work)
{
    const auto running = std::make_shared<Running>();
    running->work = std::move(work);
    try {
        std::thread([running] { running->run(); }).detach();
    } catch (const std::system_error &) {
        running->run();
        return;
    }
    std::unique_lock<std::mutex> lock(running->mutex);
    running->changed.wait_for(lock, Patience, [&running] { return running->isDone; });
}

} // namespace KODMS::Services
