#pragma once

#include "Presentation/Color.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace trellisport {

/// The colours of every screen, by what they are for, and the platform's named colours in the dark
/// scheme. The same values for C++ (namespace colors) and for QML (the Colors singleton).
namespace colors {

inline QColor background()
{
    return colorFromHex("0A0A0A");
}
inline QColor surface()
{
    return colorFromHex("1a1a1a");
}
inline QColor innerSurface()
{
    return colorFromHex("111111");
}
inline QColor hairline()
{
    return colorFromHex("333333");
}
inline QColor dimText()
{
    return colorFromHex("555555");
}
inline QColor mutedText()
{
    return colorFromHex("888888");
}
inline QColor accent()
{
    return colorFromHex("3B82F6");
}
inline QColor agentSurface()
{
    return colorFromHex("1E3A5F");
}

inline QColor white()
{
    return {255, 255, 255};
}
inline QColor gray()
{
    return {142, 142, 147};
}
inline QColor red()
{
    return {255, 69, 58};
}
inline QColor orange()
{
    return {255, 159, 10};
}
inline QColor yellow()
{
    return {255, 214, 10};
}
inline QColor green()
{
    return {48, 209, 88};
}
inline QColor mint()
{
    return {102, 212, 207};
}
inline QColor cyan()
{
    return {100, 210, 255};
}
inline QColor blue()
{
    return {10, 132, 255};
}
inline QColor indigo()
{
    return {94, 92, 230};
}
inline QColor purple()
{
    return {191, 90, 242};
}

inline QColor secondaryText()
{
    return {255, 255, 255, 153};
}
inline QColor placeholderText()
{
    return {255, 255, 255, 77};
}
inline QColor separator()
{
    return {84, 84, 88, 153};
}
inline QColor fieldFill()
{
    return {118, 118, 128, 61};
}

} // namespace colors

class Colors : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QColor background READ background CONSTANT FINAL)
    Q_PROPERTY(QColor surface READ surface CONSTANT FINAL)
    Q_PROPERTY(QColor innerSurface READ innerSurface CONSTANT FINAL)
    Q_PROPERTY(QColor hairline READ hairline CONSTANT FINAL)
    Q_PROPERTY(QColor dimText READ dimText CONSTANT FINAL)
    Q_PROPERTY(QColor mutedText READ mutedText CONSTANT FINAL)
    Q_PROPERTY(QColor accent READ accent CONSTANT FINAL)
    Q_PROPERTY(QColor agentSurface READ agentSurface CONSTANT FINAL)
    Q_PROPERTY(QColor white READ white CONSTANT FINAL)
    Q_PROPERTY(QColor gray READ gray CONSTANT FINAL)
    Q_PROPERTY(QColor red READ red CONSTANT FINAL)
    Q_PROPERTY(QColor yellow READ yellow CONSTANT FINAL)
    Q_PROPERTY(QColor green READ green CONSTANT FINAL)
    Q_PROPERTY(QColor secondaryText READ secondaryText CONSTANT FINAL)
    Q_PROPERTY(QColor placeholderText READ placeholderText CONSTANT FINAL)
    Q_PROPERTY(QColor separator READ separator CONSTANT FINAL)
    Q_PROPERTY(QColor fieldFill READ fieldFill CONSTANT FINAL)
public:
    using QObject::QObject;

    static QColor background() { return colors::background(); }
    static QColor surface() { return colors::surface(); }
    static QColor innerSurface() { return colors::innerSurface(); }
    static QColor hairline() { return colors::hairline(); }
    static QColor dimText() { return colors::dimText(); }
    static QColor mutedText() { return colors::mutedText(); }
    static QColor accent() { return colors::accent(); }
    static QColor agentSurface() { return colors::agentSurface(); }
    static QColor white() { return colors::white(); }
    static QColor gray() { return colors::gray(); }
    static QColor red() { return colors::red(); }
    static QColor yellow() { return colors::yellow(); }
    static QColor green() { return colors::green(); }
    static QColor secondaryText() { return colors::secondaryText(); }
    static QColor placeholderText() { return colors::placeholderText(); }
    static QColor separator() { return colors::separator(); }
    static QColor fieldFill() { return colors::fieldFill(); }

    /// The colour at another opacity, 0 to 1.
    Q_INVOKABLE static QColor faded(const QColor &color, double opacity)
    {
        QColor result = color;
        result.setAlphaF(static_cast<float>(opacity));
        return result;
    }
};

} // namespace trellisport
