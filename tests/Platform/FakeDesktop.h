#pragma once

#include <QDesktopServices>
#include <QLatin1String>
#include <QObject>
#include <QUrl>

#include <array>
#include <string>
#include <vector>

namespace trellisport::test {

/// Takes the addresses that are handed to the desktop, for as long as it lives. Main thread.
class FakeDesktop : public QObject {
    Q_OBJECT
public:
    FakeDesktop()
    {
        for (const char *scheme : schemes) {
            QDesktopServices::setUrlHandler(QLatin1String(scheme), this, "take");
        }
    }
    FakeDesktop(const FakeDesktop &) = delete;
    FakeDesktop &operator=(const FakeDesktop &) = delete;
    ~FakeDesktop() override
    {
        for (const char *scheme : schemes) {
            QDesktopServices::unsetUrlHandler(QLatin1String(scheme));
        }
    }

    /// In order of arrival.
    [[nodiscard]] const std::vector<std::string> &opened() const { return m_opened; }

    Q_INVOKABLE void take(const QUrl &url) { m_opened.push_back(url.toEncoded().toStdString()); }

private:
    static constexpr std::array<const char *, 7> schemes{"https", "mailto", "http",      "file",
                                                         "ssh",   "data",   "javascript"};

    std::vector<std::string> m_opened;
};

} // namespace trellisport::test
