#include "Presentation/ListScreenModel.h"

#include <QPointer>

#include <exception>

namespace trellisport {

ListScreenModel::Content ListScreenModel::content() const
{
    if (isLoading()) {
        return Content::Spinner;
    }
    return isEmpty() ? Content::Empty : Content::Rows;
}

QCoro::Task<> ListScreenModel::load(CancellationToken cancellation)
{
    const QPointer<ListScreenModel> self(this);
    try {
        co_await reload(cancellation);
    } catch (const std::exception &) { // NOLINT(bugprone-empty-catch): a failed load is silent
    }
    if (self) {
        endLoading();
        Q_EMIT contentChanged();
    }
}

} // namespace trellisport
