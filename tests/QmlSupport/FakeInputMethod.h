#pragma once

#include <QString>

#include <memory>

namespace trellisport::test {

/// Stands for the platform's input method while it lives: what is composed belongs to no text until
/// it is committed.
class FakeInputMethod {
public:
    FakeInputMethod();
    FakeInputMethod(const FakeInputMethod &) = delete;
    FakeInputMethod &operator=(const FakeInputMethod &) = delete;
    ~FakeInputMethod();

    /// Shows the text as being composed in what has the focus.
    void compose(const QString &text);
    /// Whether something is being composed.
    [[nodiscard]] bool isComposing() const;

private:
    class Context;

    std::unique_ptr<Context> m_context;
};

} // namespace trellisport::test
