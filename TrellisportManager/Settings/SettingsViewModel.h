#pragma once

#include "Platform/Clock.h"
#include "Presentation/ScreenModel.h"
#include "ServiceAccess/Records.h"
#include "ServiceAccess/ServiceAddress.h"
#include "ServiceAccess/TrellisportAPI.h"

#include <QString>

#include <memory>
#include <string>
#include <vector>

namespace trellisport {

/// The agent's settings: a map of texts, loaded whole, edited here and sent back whole, with the
/// keys that the screen does not show. Failures are silent: a failed load shows what there was, and
/// after a failed save the edits are still here.
class SettingsViewModel : public trellisport::ScreenModel {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool previewMode READ previewMode WRITE setPreviewMode NOTIFY configChanged FINAL)
    Q_PROPERTY(
        QString maxDailyBids READ maxDailyBids WRITE setMaxDailyBids NOTIFY configChanged FINAL)
    Q_PROPERTY(QString dailyRevenueTarget READ dailyRevenueTarget WRITE setDailyRevenueTarget NOTIFY
                   configChanged FINAL)
    Q_PROPERTY(QString maxConcurrentProjects READ maxConcurrentProjects WRITE
                   setMaxConcurrentProjects NOTIFY configChanged FINAL)
    Q_PROPERTY(SaveButton saveButton READ saveButton NOTIFY saveButtonChanged FINAL)
    Q_PROPERTY(QString hostName READ hostName CONSTANT FINAL)
    Q_PROPERTY(QString webAddress READ webAddress CONSTANT FINAL)
public:
    /// What the save button shows, the first that applies: a save is under way; one has just
    /// succeeded; the way to save.
    enum class SaveButton { Saving, Saved, Save };
    Q_ENUM(SaveButton)

    SettingsViewModel();
    /// api and clock must outlive the model.
    SettingsViewModel(TrellisportAPI &api, platform::Clock &clock, const ServiceAddress &address,
                      QObject *parent = nullptr);

    /// The settings as last loaded, with the edits since.
    [[nodiscard]] const TextMap &config() const { return m_config; }

    /// Whether the agent is in preview mode: yes unless the service says something else than
    /// "true", in any letter case.
    [[nodiscard]] bool previewMode() const;
    /// Stores "true" or "false".
    void setPreviewMode(bool on);

    [[nodiscard]] QString maxDailyBids() const;
    void setMaxDailyBids(const QString &text);
    [[nodiscard]] QString dailyRevenueTarget() const;
    void setDailyRevenueTarget(const QString &text);
    [[nodiscard]] QString maxConcurrentProjects() const;
    void setMaxConcurrentProjects(const QString &text);

    /// The text under a key; empty when the key is missing.
    [[nodiscard]] QString configText(const std::string &key) const;
    /// Stores a text under a key, also the empty one. Nothing is sent.
    void setConfigText(const std::string &key, const QString &text);

    [[nodiscard]] bool isSaving() const { return m_isSaving; }
    /// True for 2 seconds from each successful save.
    [[nodiscard]] bool showSaved() const { return m_savesShown > 0; }
    [[nodiscard]] SaveButton saveButton() const;

    /// The service's host, and the address of its web dashboard.
    [[nodiscard]] QString hostName() const { return m_hostName; }
    [[nodiscard]] QString webAddress() const { return m_webAddress; }

    /// Loads the settings once; they take the place of the edits.
    QCoro::Task<> loadConfig(CancellationToken cancellation = {});
    /// Sends the settings as they are now. It goes on when the screen is left, and a second one may
    /// run beside it.
    QCoro::Task<> saveConfig();

    /// The save button was pressed.
    Q_INVOKABLE void save();

Q_SIGNALS:
    void configChanged();
    void saveButtonChanged();

protected:
    QCoro::Task<> load(CancellationToken cancellation) override;

private:
    void setSaving(bool saving);
    void showSavedForAWhile();

    TrellisportAPI &m_api;
    platform::Clock &m_clock;
    TextMap m_config;
    bool m_isSaving = false;
    int m_savesShown = 0;
    std::vector<std::unique_ptr<platform::Timer>> m_savedTimers;
    QString m_hostName;
    QString m_webAddress;
};

} // namespace trellisport
