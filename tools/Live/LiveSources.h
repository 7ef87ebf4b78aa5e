#pragma once

#include <QDir>
#include <QQmlAbstractUrlInterceptor>
#include <QString>

namespace trellisport::live {

/// Gives the engine the QML files of a source folder in place of those that are built in, with
/// which their paths agree. Any thread of the engine.
class LiveSources : public QQmlAbstractUrlInterceptor {
public:
    /// root: the folder TrellisportManager of the sources.
    explicit LiveSources(const QDir &root);

    QUrl intercept(const QUrl &path, DataType type) override;
    /// Differs when a QML file has been saved, added or taken away since it was asked before.
    [[nodiscard]] QString state() const;

private:
    QDir m_root;
};

} // namespace trellisport::live
