#include "PracticeService/Keeper.h"

#include "PracticeService/World.h"

#include <algorithm>
#include <iostream>

namespace trellisport::practice {

namespace {

Moment systemNow()
{
    return std::chrono::floor<seconds>(std::chrono::system_clock::now());
}

/// Where the agent's time goes on. It never goes back, and time that stands still goes on standing.
Moment startOf(Store &store, double speed)
{
    const auto note = store.note("clock");
    const auto last = note ? momentOf(*note) : std::nullopt;
    if (!last)
        return systemNow();
    return speed == 0 ? *last : std::max(*last, systemNow());
}

} // namespace

Keeper::Keeper(Setup setup)
{
    const std::string file = setup.file.string();
    std::promise<void> opened;
    m_thread = std::thread([this, &opened, setup = std::move(setup)] { live(setup, opened); });
    try {
        opened.get_future().get();
    } catch (const StoreError &error) {
        m_thread.join();
        throw StoreError("Cannot use " + file + ": " + error.what() + '.');
    } catch (...) {
        m_thread.join();
        throw;
    }
}

Keeper::~Keeper()
{
    {
        const std::lock_guard lock(m_mutex);
        m_closing = true;
    }
    m_changed.notify_one();
    m_thread.join();
}

void Keeper::post(std::function<void(Desk &)> task)
{
    {
        const std::lock_guard lock(m_mutex);
        m_tasks.push_back(std::move(task));
    }
    m_changed.notify_one();
}

void Keeper::live(const Setup &setup, std::promise<void> &opened)
{
    bool open = false;
    try {
        const Material material = Material::load();
        Store store(setup.file);
        Ledger ledger(store.database(), Random(setup.seed));
        Workflow workflow(ledger, material, Random(setup.seed));
        const bool isNew = !store.isFilled();
        const Moment begin = setup.begin.value_or(systemNow());
        if (isNew)
            populate(store, ledger, workflow, material, setup.seed, setup.scale, begin);
        const std::uint64_t seed = std::stoull(store.note("seed").value_or("1"));
        Agent agent(store, ledger, workflow, material, seed, setup.alerts);
        AgentClock clock(isNew ? begin : startOf(store, setup.speed), setup.speed);
        Desk desk{store, agent, clock};
        open = true;
        opened.set_value();
        serve(desk);
    } catch (...) {
        // serve() lets nothing out, so whoever opens still waits.
        if (!open)
            opened.set_exception(std::current_exception());
    }
}

void Keeper::serve(Desk &desk)
{
    const double speed = desk.clock.speed();
    const auto pause = std::chrono::milliseconds(
        speed == 0 ? 3'600'000 : static_cast<int>(std::clamp(5000 / speed, 100.0, 1000.0)));
    auto nextLook = std::chrono::steady_clock::now();
    std::unique_lock lock(m_mutex);
    while (true) {
        m_changed.wait_until(lock, nextLook, [this] { return m_closing || !m_tasks.empty(); });
        if (!m_tasks.empty()) {
            const auto task = std::move(m_tasks.front());
            m_tasks.pop_front();
            lock.unlock();
            task(desk);
            lock.lock();
            continue;
        }
        if (m_closing)
            return;
        lock.unlock();
        try {
            if (speed > 0)
                desk.agent.advance(desk.clock.now());
        } catch (const std::exception &error) {
            std::cerr << "The agent's step failed: " << error.what() << '\n';
        }
        nextLook = std::chrono::steady_clock::now() + pause;
        lock.lock();
    }
}

} // namespace trellisport::practice
