#pragma once

#include <QFont>
#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace trellisport {

/// The type of every screen: the platform's text styles and the system font of any size.
/// Sizes and line heights are in points (logical pixels).
class Typography : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
public:
    enum TextStyle {
        LargeTitle,
        Title,
        Title2,
        Title3,
        Headline,
        Body,
        Callout,
        Subheadline,
        Footnote,
        Caption,
        Caption2,
    };
    Q_ENUM(TextStyle)

    using QObject::QObject;

    [[nodiscard]] Q_INVOKABLE static double size(trellisport::Typography::TextStyle style);
    [[nodiscard]] Q_INVOKABLE static double lineHeight(trellisport::Typography::TextStyle style);
    /// The line height of the system font at a size.
    [[nodiscard]] Q_INVOKABLE static double systemLineHeight(double size) { return size * 1.2; }

    /// A text style's font. weight: QFont::Weight, or 0 for the style's own.
    [[nodiscard]] Q_INVOKABLE static QFont font(trellisport::Typography::TextStyle style,
                                                int weight, bool monospaced);
    /// The system font at a size in points. weight: QFont::Weight, or 0 for regular.
    [[nodiscard]] Q_INVOKABLE static QFont systemFont(double size, int weight, bool monospaced);
};

} // namespace trellisport
