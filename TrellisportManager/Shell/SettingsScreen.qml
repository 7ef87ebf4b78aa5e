import TrellisportManager.Settings

SettingsView {
    viewModel: SettingsViewModel {}
}
