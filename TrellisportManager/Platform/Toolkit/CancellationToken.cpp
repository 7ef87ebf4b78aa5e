#include "Platform/CancellationToken.h"

#include <mutex>
#include <unordered_set>
#include <utility>

namespace trellisport::platform {

/// One registered callback. Its mutex is held while the callback runs, so that whoever takes the
/// callback back waits for it; recursive, because the callback may take itself back.
struct CancellationToken::Registration::Node {
    std::recursive_mutex mutex;
    std::function<void()> callback;
    std::weak_ptr<State> state;

    void call();
};

struct CancellationToken::State {
    using Node = Registration::Node;

    mutable std::mutex mutex;
    bool isCancelled = false;
    std::unordered_set<std::shared_ptr<Node>> nodes;
};

void CancellationToken::Registration::Node::call()
{
    const std::scoped_lock lock(mutex);
    const std::function<void()> called = std::exchange(callback, nullptr);
    if (called) {
        called();
    }
}

CancellationToken::Registration::Registration(Registration &&other) noexcept = default;

CancellationToken::Registration &
CancellationToken::Registration::operator=(Registration &&other) noexcept
{
    Registration replaced(std::move(other));
    std::swap(m_node, replaced.m_node);
    return *this;
}

CancellationToken::Registration::~Registration()
{
    if (!m_node) {
        return;
    }
    if (const std::shared_ptr<State> state = m_node->state.lock()) {
        const std::scoped_lock lock(state->mutex);
        state->nodes.erase(m_node);
    }
    std::function<void()> unused;
    const std::scoped_lock lock(m_node->mutex);
    unused.swap(m_node->callback);
}

bool CancellationToken::isCancelled() const
{
    if (!m_state) {
        return false;
    }
    const std::scoped_lock lock(m_state->mutex);
    return m_state->isCancelled;
}

CancellationToken::Registration CancellationToken::onCancel(std::function<void()> callback) const
{
    Registration registration;
    if (!m_state) {
        return registration;
    }
    {
        const std::scoped_lock lock(m_state->mutex);
        if (!m_state->isCancelled) {
            registration.m_node = std::make_shared<Registration::Node>();
            registration.m_node->callback = std::move(callback);
            registration.m_node->state = m_state;
            m_state->nodes.insert(registration.m_node);
            return registration;
        }
    }
    callback();
    return registration;
}

CancellationSource::CancellationSource()
    : m_state(std::make_shared<CancellationToken::State>())
{
}

CancellationToken CancellationSource::token() const
{
    CancellationToken token;
    token.m_state = m_state;
    return token;
}

void CancellationSource::cancel() const
{
    // The callbacks may drop this source, and take registrations back.
    const std::shared_ptr<CancellationToken::State> state = m_state;
    std::unordered_set<std::shared_ptr<CancellationToken::State::Node>> nodes;
    {
        const std::scoped_lock lock(state->mutex);
        state->isCancelled = true;
        nodes.swap(state->nodes);
    }
    for (const auto &node : nodes) {
        node->call();
    }
}

} // namespace trellisport::platform
