#pragma once

#include "CurlClient.h"
#include "ServiceProcess.h"

#include <gmock/gmock.h>

#include <QString>
#include <QTemporaryDir>

#include <string>
#include <vector>

namespace trellisport::practice {

/// The practice service with a console for browsers that is made of a few small files.
class AppBench : public testing::Test {
protected:
    AppBench();
    void SetUp() override;

    /// Writes a file of the console, and the folders that it needs.
    void write(const std::string &name, const std::string &content) const;
    void remove(const std::string &name) const;
    [[nodiscard]] std::string pathOf(const std::string &name) const;

    [[nodiscard]] std::string urlOf(const std::string &path) const;
    /// path: behind the service's address, such as "/app/".
    CurlClient::Reply get(const std::string &path, const std::vector<std::string> &headers = {});
    /// The reply's header, or "-" when there is none.
    [[nodiscard]] static std::string headerOf(const CurlClient::Reply &reply, const char *name);

    QTemporaryDir m_folder;
    QTemporaryDir m_app;
    std::unique_ptr<ServiceProcess> m_service;
    std::unique_ptr<CurlClient> m_client;
};

} // namespace trellisport::practice
