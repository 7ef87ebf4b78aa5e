#pragma once

#include <QBasicTimer>
#include <QColor>
#include <QQuickPaintedItem>

namespace trellisport {

/// The turning wheel of an unfinished load. It repaints eight times a turn and only while it is
/// seen, so that a waiting screen costs next to nothing.
class SpinnerImage : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged FINAL)
    /// Whether it turns while it is seen.
    Q_PROPERTY(bool running READ isRunning WRITE setRunning NOTIFY runningChanged FINAL)
    /// How much of the wheel is drawn, 0 to 1, as a pull to refresh unfolds it.
    Q_PROPERTY(double progress READ progress WRITE setProgress NOTIFY progressChanged FINAL)
public:
    explicit SpinnerImage(QQuickItem *parent = nullptr);

    [[nodiscard]] QColor color() const { return m_color; }
    void setColor(const QColor &color);
    [[nodiscard]] bool isRunning() const { return m_running; }
    void setRunning(bool running);
    [[nodiscard]] double progress() const { return m_progress; }
    void setProgress(double progress);

    void paint(QPainter *painter) override;

Q_SIGNALS:
    void colorChanged();
    void runningChanged();
    void progressChanged();

protected:
    void timerEvent(QTimerEvent *event) override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;

private:
    void updateTimer();

    QColor m_color = QColor(142, 142, 147);
    bool m_running = true;
    double m_progress = 1;
    int m_step = 0;
    QBasicTimer m_timer;
};

} // namespace trellisport
