#include "Presentation/Typography.h"

#include "Platform/Platform.h"

#include <QFontDatabase>
#include <QFontMetricsF>

#include <array>
#include <cmath>

namespace trellisport {

namespace {

struct Style {
    double size;
    double lineHeight;
    int weight;
};

// In the order of Typography::TextStyle.
constexpr std::array styles{
    Style{34, 41, QFont::Normal}, Style{28, 34, QFont::Normal},   Style{22, 28, QFont::Normal},
    Style{20, 25, QFont::Normal}, Style{17, 22, QFont::DemiBold}, Style{17, 22, QFont::Normal},
    Style{16, 21, QFont::Normal}, Style{15, 20, QFont::Normal},   Style{13, 18, QFont::Normal},
    Style{12, 16, QFont::Normal}, Style{11, 13, QFont::Normal},
};

const Style &values(Typography::TextStyle style)
{
    return styles.at(static_cast<std::size_t>(style));
}

QFont makeFont(double size, int weight, bool monospaced)
{
    static const QStringList proportional{QStringLiteral("Inter"), QStringLiteral("sans-serif")};
    static const QStringList fixed{QStringLiteral("JetBrains Mono"), QStringLiteral("monospace")};
    QFont font;
    font.setFamilies(monospaced ? fixed : proportional);
    font.setStyleHint(monospaced ? QFont::Monospace : QFont::SansSerif);
    font.setPixelSize(qRound(size));
    font.setWeight(static_cast<QFont::Weight>(weight));
    if (monospaced) {
        // Code is read character by character: without shaping "->" stays what was written, where
        // the font would draw an arrow. Scripts that need shaping keep it.
        font.setStyleStrategy(QFont::PreferNoShaping);
        font.setFixedPitch(true);
    }
    return font;
}

/// Lines of whole points keep glyphs sharp; those of the design are what they are.
double scaledLine(double height, double textScale)
{
    return textScale == 1 ? height : std::round(height * textScale);
}

} // namespace

Typography::Typography(QObject *parent)
    : QObject(parent)
    , m_textScale(platform::Platform::current().appearance().textScale())
    , m_observation(platform::Platform::current().appearance().observe([this] {
        const double scale = platform::Platform::current().appearance().textScale();
        if (m_textScale != scale) {
            m_textScale = scale;
            Q_EMIT textScaleChanged();
        }
    }))
{
}

double Typography::size(TextStyle style)
{
    return values(style).size;
}

double Typography::lineHeight(TextStyle style, double textScale)
{
    return scaledLine(values(style).lineHeight, textScale);
}

double Typography::systemLineHeight(double size, double textScale)
{
    return scaledLine(size * 1.2, textScale);
}

QFont Typography::font(TextStyle style, int weight, bool monospaced, double textScale)
{
    const Style &s = values(style);
    return makeFont(s.size * textScale, weight == 0 ? s.weight : weight, monospaced);
}

QFont Typography::systemFont(double size, int weight, bool monospaced, double textScale)
{
    return makeFont(size * textScale, weight == 0 ? int(QFont::Normal) : weight, monospaced);
}

double Typography::lineWidth(const QString &text, const QFont &font)
{
    return std::ceil(QFontMetricsF(font).horizontalAdvance(text));
}

void Typography::readAhead()
{
    for (const int weight : {QFont::Normal, QFont::Medium, QFont::DemiBold, QFont::Bold}) {
        (void)QFontMetricsF(makeFont(styles[0].size, weight, false)).height();
    }
}

} // namespace trellisport
