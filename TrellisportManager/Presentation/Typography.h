#pragma once

#include <QFont>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <memory>

namespace trellisport {

/// The type of every screen: the platform's text styles and the system font of any size.
/// Sizes and line heights are in points (logical pixels). Each function takes the text scale that
/// it reckons with, so that a binding which hands over `Typography.textScale` follows its changes;
/// at 1 all have the sizes of the design, at others they are whole points. Main thread only.
class Typography : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    /// How much larger than usual the user wants text.
    Q_PROPERTY(double textScale READ textScale NOTIFY textScaleChanged FINAL)
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

    explicit Typography(QObject *parent = nullptr);

    [[nodiscard]] double textScale() const { return m_textScale; }

    [[nodiscard]] static double size(trellisport::Typography::TextStyle style);
    [[nodiscard]] Q_INVOKABLE static double lineHeight(trellisport::Typography::TextStyle style,
                                                       double textScale);
    /// The line height of the system font at a size.
    [[nodiscard]] Q_INVOKABLE static double systemLineHeight(double size, double textScale);

    /// A text style's font. weight: QFont::Weight, or 0 for the style's own.
    [[nodiscard]] Q_INVOKABLE static QFont font(trellisport::Typography::TextStyle style,
                                                int weight, bool monospaced, double textScale);
    /// The system font at a size in points. weight: QFont::Weight, or 0 for regular.
    [[nodiscard]] Q_INVOKABLE static QFont systemFont(double size, int weight, bool monospaced,
                                                      double textScale);
    /// How wide a text is on one line, in whole points. Unlike a text item's implicit width it
    /// rests on nothing that follows from the item's own size, so a binding may decide that size by
    /// it.
    [[nodiscard]] Q_INVOKABLE static double lineWidth(const QString &text, const QFont &font);

    /// Finds the fonts that the screens use, so that the first text need not wait for it. Any
    /// thread, while there is a QGuiApplication.
    static void readAhead();

Q_SIGNALS:
    void textScaleChanged();

private:
    double m_textScale;
    std::shared_ptr<void> m_observation;
};

} // namespace trellisport
