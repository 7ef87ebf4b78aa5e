#include "Settings/SettingsViewModel.h"

#include "Platform/Platform.h"

#include <QPointer>

#include <algorithm>
#include <chrono>
#include <exception>
#include <string_view>
#include <utility>

namespace trellisport {

namespace {

constexpr std::chrono::seconds savedShownFor{2};

const std::string previewModeKey = "preview_mode";
const std::string maxDailyBidsKey = "max_daily_bids";
const std::string dailyRevenueTargetKey = "daily_revenue_target";
const std::string maxConcurrentProjectsKey = "max_concurrent_projects";

/// No letter outside of ASCII becomes one of these four in lower case.
bool isTrue(std::string_view text)
{
    constexpr std::string_view word = "true";
    return std::equal(
        text.begin(), text.end(), word.begin(), word.end(),
        [](char letter, char lower) { return letter == lower || letter == lower - 'a' + 'A'; });
}

} // namespace

SettingsViewModel::SettingsViewModel()
    : SettingsViewModel(TrellisportAPI::shared(), platform::Platform::current().clock(),
                        parseServiceAddress(TrellisportAPI::shared().baseURL()))
{
}

SettingsViewModel::SettingsViewModel(TrellisportAPI &api, platform::Clock &clock,
                                     const ServiceAddress &address, QObject *parent)
    : ScreenModel(parent)
    , m_api(api)
    , m_clock(clock)
    , m_hostName(QString::fromStdString(address.host))
    , m_webAddress(QString::fromStdString(address.webURL))
{
}

bool SettingsViewModel::previewMode() const
{
    const auto found = m_config.find(previewModeKey);
    return found == m_config.end() || isTrue(found->second);
}

void SettingsViewModel::setPreviewMode(bool on)
{
    setConfigText(previewModeKey, on ? QStringLiteral("true") : QStringLiteral("false"));
}

QString SettingsViewModel::maxDailyBids() const
{
    return configText(maxDailyBidsKey);
}

void SettingsViewModel::setMaxDailyBids(const QString &text)
{
    setConfigText(maxDailyBidsKey, text);
}

QString SettingsViewModel::dailyRevenueTarget() const
{
    return configText(dailyRevenueTargetKey);
}

void SettingsViewModel::setDailyRevenueTarget(const QString &text)
{
    setConfigText(dailyRevenueTargetKey, text);
}

QString SettingsViewModel::maxConcurrentProjects() const
{
    return configText(maxConcurrentProjectsKey);
}

void SettingsViewModel::setMaxConcurrentProjects(const QString &text)
{
    setConfigText(maxConcurrentProjectsKey, text);
}

QString SettingsViewModel::configText(const std::string &key) const
{
    const auto found = m_config.find(key);
    return found == m_config.end() ? QString() : QString::fromStdString(found->second);
}

void SettingsViewModel::setConfigText(const std::string &key, const QString &text)
{
    m_config[key] = text.toStdString();
    Q_EMIT configChanged();
}

SettingsViewModel::SaveButton SettingsViewModel::saveButton() const
{
    if (m_isSaving) {
        return SaveButton::Saving;
    }
    return showSaved() ? SaveButton::Saved : SaveButton::Save;
}

QCoro::Task<> SettingsViewModel::loadConfig(CancellationToken cancellation)
{
    const QPointer<SettingsViewModel> self(this);
    try {
        TextMap config = co_await m_api.getConfig(std::move(cancellation));
        if (self) {
            m_config = std::move(config);
            Q_EMIT configChanged();
            endLoading();
        }
    } catch (const std::exception &) {
        if (self) {
            endLoading();
        }
    }
}

QCoro::Task<> SettingsViewModel::saveConfig()
{
    const QPointer<SettingsViewModel> self(this);
    setSaving(true);
    try {
        co_await m_api.updateConfig(m_config);
        if (self) {
            showSavedForAWhile();
            setSaving(false);
        }
    } catch (const std::exception &) {
        if (self) {
            setSaving(false);
        }
    }
}

void SettingsViewModel::save()
{
    saveConfig();
}

QCoro::Task<> SettingsViewModel::load(CancellationToken cancellation)
{
    return loadConfig(std::move(cancellation));
}

void SettingsViewModel::setSaving(bool saving)
{
    m_isSaving = saving;
    Q_EMIT saveButtonChanged();
}

void SettingsViewModel::showSavedForAWhile()
{
    if (m_savesShown == 0) {
        // Not when they ring: a timer must not go within its own call.
        m_savedTimers.clear();
    }
    ++m_savesShown;
    m_savedTimers.push_back(m_clock.after(savedShownFor, [this] {
        --m_savesShown;
        Q_EMIT saveButtonChanged();
    }));
}

} // namespace trellisport
