#include "AppBench.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace trellisport::practice {

AppBench::AppBench()
{
    write("index.html", "<!DOCTYPE html><title>Console</title>");
    write("start.js", "start()");
    write("program.wasm", std::string("\0asm", 4));
}

void AppBench::SetUp()
{
    m_service = std::make_unique<ServiceProcess>(
        m_folder.path(), QStringList{QStringLiteral("--app"), m_app.path()});
    ASSERT_FALSE(m_service->url().empty()) << m_service->errors().toStdString();
    m_client = std::make_unique<CurlClient>(m_service->authority());
}

void AppBench::write(const std::string &name, const std::string &content) const
{
    const QString path = QString::fromStdString(pathOf(name));
    ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    ASSERT_EQ(file.write(QByteArray::fromStdString(content)), static_cast<qint64>(content.size()));
}

void AppBench::remove(const std::string &name) const
{
    ASSERT_TRUE(QFile::remove(QString::fromStdString(pathOf(name))));
}

std::string AppBench::pathOf(const std::string &name) const
{
    return m_app.path().toStdString() + '/' + name;
}

std::string AppBench::urlOf(const std::string &path) const
{
    return m_service->url() + path;
}

CurlClient::Reply AppBench::get(const std::string &path, const std::vector<std::string> &headers)
{
    return m_client->get(urlOf(path), headers);
}

std::string AppBench::headerOf(const CurlClient::Reply &reply, const char *name)
{
    const auto found = reply.headers.find(name);
    return found == reply.headers.end() ? "-" : found->second;
}

} // namespace trellisport::practice
