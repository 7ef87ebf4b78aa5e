#include "PracticeService/Push/PushSender.h"

#include "PracticeService/Push/DeviceToken.h"
#include "PracticeService/Push/PushPayload.h"

#include <QUuid>

#include <algorithm>
#include <exception>
#include <iostream>
#include <utility>

namespace trellisport::practice {

namespace {
constexpr int tries = 3;
}

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

void PushSender::start(Devices devices, Post post, std::chrono::milliseconds retryDelay)
{
    m_devices = std::move(devices);
    m_post = std::move(post);
    m_retryDelay = retryDelay;
    m_thread = std::thread([this] { work(); });
}

void PushSender::stop()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isStopping = true;
        m_changed.notify_all();
    }
    if (m_thread.joinable()) {
        m_thread.join();
    }
}

void PushSender::work()
{
    for (;;) {
        std::deque<Alert> alerts;
        {
            std::unique_lock lock(m_mutex);
            const auto hasNews = [this] { return m_isStopping || !m_alerts.empty(); };
            if (m_deliveries.empty()) {
                m_changed.wait(lock, hasNews);
            } else {
                m_changed.wait_until(lock, m_deliveries.back().due, hasNews);
            }
            if (m_isStopping) {
                return;
            }
            alerts.swap(m_alerts);
        }
        try {
            for (const Alert &alert : alerts) {
                address(alert);
            }
            if (!m_deliveries.empty() && m_deliveries.back().due <= Clock::now()) {
                Delivery next = std::move(m_deliveries.back());
                m_deliveries.pop_back();
                attempt(std::move(next));
            }
        } catch (const std::exception &error) {
            std::cerr << "A push failed: " << error.what() << '\n';
        }
    }
}

void PushSender::address(const Alert &alert)
{
    const QByteArray payload =
        pushPayload(alert, QUuid::createUuid().toString(QUuid::WithoutBraces).toStdString());
    for (const std::string &token : m_devices.tokens()) {
        const auto target = readDeviceToken(token);
        auto content = target ? encryptPushMessage(target->recipient, payload) : std::nullopt;
        if (content) { // else it is of a system that is reached in another way
            schedule({{target->endpoint, *std::move(content), alert.type == "decision_needed"},
                      token,
                      1,
                      Clock::now()});
        }
    }
}

void PushSender::schedule(Delivery delivery)
{
    const auto later = [](const Delivery &one, const Delivery &other) {
        return one.due > other.due;
    };
    m_deliveries.insert(std::lower_bound(m_deliveries.begin(), m_deliveries.end(), delivery, later),
                        std::move(delivery));
}

void PushSender::attempt(Delivery delivery)
{
    switch (m_post(delivery.message)) {
    case PushOutcome::Accepted:
        break;
    case PushOutcome::Gone:
        m_devices.forget(delivery.token);
        break;
    case PushOutcome::Failed:
        if (delivery.attempt < tries) {
            delivery.due = Clock::now() + m_retryDelay * delivery.attempt;
            ++delivery.attempt;
            schedule(std::move(delivery));
        }
        break;
    }
}

} // namespace trellisport::practice
