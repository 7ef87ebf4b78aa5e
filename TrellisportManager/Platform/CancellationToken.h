#pragma once

#include <functional>
#include <memory>

namespace trellisport::platform {

/// Tells an asynchronous operation that nobody waits for it any longer. A default-made token is
/// never cancelled. Copies are one token. Any thread.
class CancellationToken {
public:
    /// Keeps a callback registered; destroying it takes the callback back. When the destructor
    /// returns, the callback neither runs nor will run (but for a callback that destroys its own).
    class [[nodiscard]] Registration {
    public:
        Registration() = default;
        Registration(Registration &&) noexcept;
        Registration &operator=(Registration &&) noexcept;
        Registration(const Registration &) = delete;
        Registration &operator=(const Registration &) = delete;
        ~Registration();

    private:
        friend class CancellationToken;
        struct Node;
        std::shared_ptr<Node> m_node;
    };

    CancellationToken() = default;

    [[nodiscard]] bool isCancelled() const;

    /// Calls the callback once when the token is cancelled, on the cancelling thread; at once when
    /// it already is.
    Registration onCancel(std::function<void()> callback) const;

private:
    friend class CancellationSource;
    struct State;
    std::shared_ptr<State> m_state;
};

/// The side that cancels. Destroying it does not cancel.
class CancellationSource {
public:
    CancellationSource();
    [[nodiscard]] CancellationToken token() const;
    /// More than once is harmless. Any thread.
    void cancel() const;

private:
    std::shared_ptr<CancellationToken::State> m_state;
};

} // namespace trellisport::platform
