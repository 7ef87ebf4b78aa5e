#include "PracticeService/Push/PushSender.h"

#include "PracticeService/Push/DeviceToken.h"
#include "PracticeService/Push/PushPayload.h"

#include <QScopeGuard>
#include <QUuid>

#include <algorithm>
#include <exception>
#include <iostream>
#include <utility>

namespace trellisport::practice {

namespace {
constexpr int tries = 3;
constexpr int threads = 4;
} // namespace

PushSender::~PushSender()
{
    stop();
}

void PushSender::push(const Alert &alert)
{
    const std::lock_guard lock(m_mutex);
    if (m_alerts.size() == mostWaiting) {
        m_alerts.pop_front();
    }
    m_alerts.push_back(alert);
    m_changed.notify_all();
}

void PushSender::start(Devices devices, Post post, Patience patience)
{
    m_devices = std::move(devices);
    m_post = std::move(post);
    m_patience = patience;
    for (int count = 0; count < threads; ++count) {
        m_threads.emplace_back([this] { work(); });
    }
}

void PushSender::stop()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isStopping = true;
        m_changed.notify_all();
    }
    for (std::thread &thread : m_threads) {
        thread.join();
    }
    m_threads.clear();
}

void PushSender::work()
{
    Lock lock(m_mutex);
    while (!m_isStopping) {
        try {
            const auto next = nextDelivery();
            if (!m_alerts.empty() && !m_isAddressing) {
                address(lock);
            } else if (next == m_deliveries.end()) {
                m_changed.wait(lock);
            } else if (next->due > Clock::now()) {
                m_changed.wait_until(lock, Clock::time_point(next->due));
            } else {
                Delivery delivery = std::move(*next);
                m_deliveries.erase(next);
                attempt(lock, std::move(delivery));
            }
        } catch (const std::exception &error) {
            std::cerr << "A push failed: " << error.what() << '\n';
        }
    }
}

void PushSender::address(Lock &lock)
{
    const Alert alert = std::move(m_alerts.front());
    m_alerts.pop_front();
    m_isAddressing = true; // one after the other, so that they stay in their order
    lock.unlock();
    std::vector<Delivery> deliveries;
    const auto finish = qScopeGuard([&] {
        lock.lock();
        m_isAddressing = false;
        for (Delivery &delivery : deliveries) {
            schedule(std::move(delivery));
        }
        m_changed.notify_all();
    });
    const QByteArray payload =
        pushPayload(alert, QUuid::createUuid().toString(QUuid::WithoutBraces).toStdString());
    for (const std::string &token : m_devices.tokens()) {
        const auto target = readDeviceToken(token);
        auto content = target ? encryptPushMessage(target->recipient, payload) : std::nullopt;
        if (content) { // else it is of a system that is reached in another way
            deliveries.push_back(
                {{target->endpoint, *std::move(content), alert.type == "decision_needed"},
                 token,
                 1,
                 Clock::now()});
        }
    }
}

void PushSender::schedule(Delivery delivery)
{
    const auto sooner = [](const Delivery &one, const Delivery &other) {
        return one.due < other.due;
    };
    m_deliveries.insert(
        std::upper_bound(m_deliveries.begin(), m_deliveries.end(), delivery, sooner),
        std::move(delivery));
}

std::vector<PushSender::Delivery>::iterator PushSender::nextDelivery()
{
    return std::find_if(m_deliveries.begin(), m_deliveries.end(), [this](const Delivery &delivery) {
        return !m_busy.contains(delivery.message.endpoint);
    });
}

void PushSender::attempt(Lock &lock, Delivery delivery)
{
    const std::string endpoint = delivery.message.endpoint;
    const std::string token = delivery.token;
    m_busy.insert(endpoint);
    lock.unlock();
    PushOutcome outcome = PushOutcome::Failed;
    const auto finish = qScopeGuard([&] {
        if (!lock.owns_lock()) {
            lock.lock();
        }
        m_busy.erase(endpoint);
        m_changed.notify_all();
    });
    outcome = m_post(delivery.message);
    lock.lock();
    if (outcome == PushOutcome::Accepted) {
        m_silentSince.erase(endpoint);
    } else if (outcome == PushOutcome::Failed && isSilentForLong(endpoint)) {
        outcome = PushOutcome::Gone;
    } else if (outcome == PushOutcome::Failed && delivery.attempt < tries) {
        delivery.due = Clock::now() + m_patience.retryDelay * delivery.attempt;
        ++delivery.attempt;
        schedule(std::move(delivery));
    }
    lock.unlock();
    if (outcome == PushOutcome::Gone) {
        m_devices.forget(token);
    }
}

bool PushSender::isSilentForLong(const std::string &endpoint)
{
    const auto now = Clock::now();
    const auto since = m_silentSince.try_emplace(endpoint, now).first;
    const bool isLong = now - since->second >= m_patience.silence;
    if (isLong) {
        m_silentSince.erase(since);
    }
    return isLong;
}

} // namespace trellisport::practice
