#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QString>

namespace trellisport {

/// Draws a symbol by name (SymbolPath.h), filled with one colour, in the largest square that fits.
/// Crisp at every scale: it is painted at the screen's resolution.
class SymbolImage : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString symbol READ symbol WRITE setSymbol NOTIFY symbolChanged FINAL)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged FINAL)
public:
    explicit SymbolImage(QQuickItem *parent = nullptr);

    [[nodiscard]] QString symbol() const { return m_symbol; }
    void setSymbol(const QString &symbol);
    [[nodiscard]] QColor color() const { return m_color; }
    void setColor(const QColor &color);

    void paint(QPainter *painter) override;

Q_SIGNALS:
    void symbolChanged();
    void colorChanged();

private:
    QString m_symbol;
    QColor m_color = Qt::white;
};

} // namespace trellisport
