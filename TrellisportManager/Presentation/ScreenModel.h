#pragma once

#include "ServiceAccess/CancellationToken.h"

#include <QCoroTask>
#include <QObject>
#include <QtQml/qqmlregistration.h>

#include <optional>

namespace trellisport {

/// What every screen that loads something shares: a loading flag that starts true and is only ever
/// set to false, and a load that starts each time the screen appears and is cancelled when it
/// goes away. Main thread only.
class ScreenModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("One is made by each screen")
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY isLoadingChanged FINAL)
public:
    explicit ScreenModel(QObject *parent = nullptr);
    ScreenModel(const ScreenModel &) = delete;
    ScreenModel &operator=(const ScreenModel &) = delete;
    ~ScreenModel() override;

    [[nodiscard]] bool isLoading() const { return m_isLoading; }

    /// The screen is seen: starts a load tied to this appearance. Harmless when already seen.
    Q_INVOKABLE void appear();
    /// The screen is no longer seen: cancels that load.
    Q_INVOKABLE void disappear();
    [[nodiscard]] bool isShown() const { return m_appearance.has_value(); }

Q_SIGNALS:
    void isLoadingChanged();

protected:
    /// Loads and applies the result. It never throws. The model may be gone when a wait inside it
    /// ends: look before touching it.
    virtual QCoro::Task<> load(CancellationToken cancellation) = 0;

    /// Sets the loading flag to false, for good.
    void endLoading();

private:
    bool m_isLoading = true;
    std::optional<CancellationSource> m_appearance;
};

} // namespace trellisport
