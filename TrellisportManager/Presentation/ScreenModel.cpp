#include "Presentation/ScreenModel.h"

namespace trellisport {

ScreenModel::ScreenModel(QObject *parent)
    : QObject(parent)
{
}

ScreenModel::~ScreenModel()
{
    disappear();
}

void ScreenModel::appear()
{
    if (!m_appearance) {
        m_appearance.emplace();
        load(m_appearance->token());
    }
}

void ScreenModel::disappear()
{
    if (m_appearance) {
        const CancellationSource ended = *m_appearance;
        m_appearance.reset();
        ended.cancel();
    }
}

void ScreenModel::endLoading()
{
    if (m_isLoading) {
        m_isLoading = false;
        Q_EMIT isLoadingChanged();
    }
}

} // namespace trellisport
