#include "Platform/Linux/Push/PrivateFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <utility>

namespace trellisport::platform {

namespace {

constexpr qint64 largest = 65'536;
constexpr QFileDevice::Permissions userOnly = QFileDevice::ReadOwner | QFileDevice::WriteOwner;

} // namespace

PrivateFile::PrivateFile(QString path)
    : m_path(std::move(path))
{
}

std::optional<QByteArray> PrivateFile::read() const
{
    QFile file(m_path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > largest) {
        return std::nullopt;
    }
    return file.read(largest);
}

bool PrivateFile::write(const QByteArray &content) const
{
    const QString folder = QFileInfo(m_path).path();
    if (!QDir(folder).exists()) {
        if (!QDir().mkpath(folder)) {
            return false;
        }
        QFile::setPermissions(folder, userOnly | QFileDevice::ExeOwner);
    }
    QSaveFile file(m_path);
    // The permissions come first: nobody else can open the file while it holds anything.
    return file.open(QIODevice::WriteOnly) && file.setPermissions(userOnly) &&
           file.write(content) == content.size() && file.commit();
}

QString stateFolder()
{
    const QString given = qEnvironmentVariable("XDG_STATE_HOME");
    const QString base =
        QDir::isAbsolutePath(given) ? given : QDir::homePath() + QStringLiteral("/.local/state");
    return base + QStringLiteral("/trellisport-manager");
}

} // namespace trellisport::platform
