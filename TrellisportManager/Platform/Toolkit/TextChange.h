#pragma once

#include <QString>
#include <QStringView>

namespace trellisport::platform {

/// What became of a text: at one place some of it went, and something else came. Places and lengths
/// count UTF-16 code units; no pair of them is ever taken apart.
struct TextChange {
    qsizetype from = 0;
    qsizetype removed = 0;
    QString inserted;

    friend bool operator==(const TextChange &, const TextChange &) = default;
};

/// The smallest change that makes one text the other. Where it could be at several places, as when
/// one of two equal letters goes, it is at the last.
[[nodiscard]] TextChange changeBetween(QStringView before, QStringView after);

} // namespace trellisport::platform
