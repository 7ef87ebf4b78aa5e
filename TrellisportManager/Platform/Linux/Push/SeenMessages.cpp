#include "Platform/Linux/Push/SeenMessages.h"

#include <QCryptographicHash>

#include <chrono>

namespace trellisport::platform {

namespace {

// Long enough that a flood of messages costs few writes, short against a push service's patience.
constexpr std::chrono::milliseconds savingDelay{500};
constexpr qsizetype digestSize = 32;

QByteArray digest(const QByteArray &identity)
{
    return QCryptographicHash::hash(identity, QCryptographicHash::Sha256);
}

} // namespace

SeenMessages::SeenMessages(const QString &path)
    : m_file(path)
{
    const QByteArray content = m_file.read().value_or(QByteArray());
    for (const QByteArray &line : content.split('\n')) {
        const QByteArray entry = QByteArray::fromHex(line);
        if (entry.size() == digestSize && m_digests.size() < capacity) {
            m_digests.append(entry);
        }
    }
    m_saving.setSingleShot(true);
    m_saving.setInterval(savingDelay);
    QObject::connect(&m_saving, &QTimer::timeout, [this] { save(); });
}

SeenMessages::~SeenMessages()
{
    if (m_saving.isActive()) {
        save();
    }
}

bool SeenMessages::contains(const QByteArray &identity) const
{
    return m_digests.contains(digest(identity));
}

void SeenMessages::add(const QByteArray &identity)
{
    m_digests.append(digest(identity));
    if (m_digests.size() > capacity) {
        m_digests.removeFirst();
    }
    if (!m_saving.isActive()) {
        m_saving.start();
    }
}

void SeenMessages::save()
{
    QByteArray content;
    for (const QByteArray &entry : m_digests) {
        content += entry.toHex() + '\n';
    }
    // Should it fail, a message may be shown again after a restart.
    static_cast<void>(m_file.write(content));
}

} // namespace trellisport::platform
