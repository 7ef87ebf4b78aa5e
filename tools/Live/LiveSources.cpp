#include "Live/LiveSources.h"

#include <QDateTime>
#include <QDirIterator>
#include <QFileInfo>
#include <QStringList>
#include <QUrl>

namespace trellisport::live {

LiveSources::LiveSources(const QDir &root)
    : m_root(root)
{
}

QUrl LiveSources::intercept(const QUrl &path, DataType type)
{
    static const QString builtIn = QStringLiteral("/qt/qml/TrellisportManager/");
    // A module's list of its types stays the built-in one.
    if (type != QmlFile || path.scheme() != QLatin1String("qrc") ||
        !path.path().startsWith(builtIn)) {
        return path;
    }
    const QString file = m_root.filePath(path.path().mid(builtIn.size()));
    return QFileInfo::exists(file) ? QUrl::fromLocalFile(file) : path;
}

QString LiveSources::state() const
{
    QStringList files;
    QDirIterator iterator(m_root.path(), {QStringLiteral("*.qml")}, QDir::Files,
                          QDirIterator::Subdirectories);
    while (iterator.hasNext()) {
        const QString file = iterator.next();
        const qint64 saved = QFileInfo(file).lastModified().toMSecsSinceEpoch();
        files << file + QLatin1Char(' ') + QString::number(saved);
    }
    files.sort();
    return files.join(QLatin1Char('\n'));
}

} // namespace trellisport::live
