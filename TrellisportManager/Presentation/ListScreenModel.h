#pragma once

#include "Presentation/CardRows.h"
#include "Presentation/ScreenModel.h"

namespace trellisport {

/// A screen that is one list: a spinner until its first load has ended, then the list or, when
/// there is nothing in it, a sentence. A load that fails is silent and changes nothing.
class ListScreenModel : public trellisport::ScreenModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("One is made by each screen")
    Q_PROPERTY(Content content READ content NOTIFY contentChanged FINAL)
    Q_PROPERTY(trellisport::CardRows *rows READ rows CONSTANT FINAL)
public:
    enum class Content { Spinner, Empty, Rows };
    Q_ENUM(Content)

    [[nodiscard]] Content content() const;
    /// Lives as long as this.
    [[nodiscard]] virtual CardRows *rows() = 0;

Q_SIGNALS:
    void contentChanged();

protected:
    using ScreenModel::ScreenModel;

    QCoro::Task<> load(CancellationToken cancellation) final;
    /// Fetches the list and shows it; throws when it can't be had. The model may be gone when a
    /// wait inside it ends: look before touching it.
    virtual QCoro::Task<> reload(CancellationToken cancellation) = 0;
    /// Whether the sentence stands for the list.
    [[nodiscard]] virtual bool isEmpty() const = 0;
};

} // namespace trellisport
