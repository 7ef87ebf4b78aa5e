#include "QmlSupport/FakeInputMethod.h"

#include <QGuiApplication>
#include <QInputMethodEvent>
#include <private/qinputmethod_p.h>
#include <qpa/qplatforminputcontext.h>

#include <utility>

namespace trellisport::test {

class FakeInputMethod::Context : public QPlatformInputContext {
public:
    [[nodiscard]] bool isValid() const override { return true; }
    void commit() override
    {
        if (!m_composed.isEmpty()) {
            QInputMethodEvent event;
            event.setCommitString(std::exchange(m_composed, {}));
            send(event);
        }
    }
    void compose(const QString &text)
    {
        m_composed = text;
        QInputMethodEvent event(text, {});
        send(event);
    }
    [[nodiscard]] bool isComposing() const { return !m_composed.isEmpty(); }

private:
    static void send(QInputMethodEvent &event)
    {
        QCoreApplication::sendEvent(QGuiApplication::focusObject(), &event);
    }

    QString m_composed;
};

FakeInputMethod::FakeInputMethod()
    : m_context(std::make_unique<Context>())
{
    QInputMethodPrivate::get(QGuiApplication::inputMethod())->testContext = m_context.get();
}

FakeInputMethod::~FakeInputMethod()
{
    QInputMethodPrivate::get(QGuiApplication::inputMethod())->testContext = nullptr;
}

void FakeInputMethod::compose(const QString &text)
{
    m_context->compose(text);
}

bool FakeInputMethod::isComposing() const
{
    return m_context->isComposing();
}

} // namespace trellisport::test
