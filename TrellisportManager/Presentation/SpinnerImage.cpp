#include "Presentation/SpinnerImage.h"

#include <QPainter>
#include <QTimerEvent>

#include <algorithm>
#include <chrono>
#include <cmath>

namespace trellisport {

namespace {
constexpr int spokes = 8;
constexpr int turnMilliseconds = 800;
} // namespace

SpinnerImage::SpinnerImage(QQuickItem *parent)
    : QQuickPaintedItem(parent)
{
    setAntialiasing(true);
}

void SpinnerImage::setColor(const QColor &color)
{
    if (m_color != color) {
        m_color = color;
        Q_EMIT colorChanged();
        update();
    }
}

void SpinnerImage::setRunning(bool running)
{
    if (m_running != running) {
        m_running = running;
        updateTimer();
        Q_EMIT runningChanged();
        update();
    }
}

void SpinnerImage::setProgress(double progress)
{
    const double bounded = std::clamp(progress, 0.0, 1.0);
    if (!qFuzzyCompare(1 + m_progress, 1 + bounded)) {
        m_progress = bounded;
        Q_EMIT progressChanged();
        update();
    }
}

void SpinnerImage::paint(QPainter *painter)
{
    const double side = std::min(width(), height());
    painter->setRenderHint(QPainter::Antialiasing);
    painter->translate(width() / 2, height() / 2);
    painter->scale(side / 20, side / 20);
    painter->setPen(Qt::NoPen);
    const int drawn = std::clamp(static_cast<int>(std::lround(m_progress * spokes)), 0, spokes);
    for (int spoke = 0; spoke < drawn; ++spoke) {
        QColor color = m_color;
        if (m_running) {
            const int age = (m_step - spoke + spokes) % spokes;
            color.setAlphaF(color.alphaF() * float(1.0 - 0.8 * age / (spokes - 1)));
        }
        painter->setBrush(color);
        painter->save();
        painter->rotate(spoke * 360.0 / spokes);
        painter->drawRoundedRect(QRectF(-1.15, -9.6, 2.3, 5.4), 1.15, 1.15);
        painter->restore();
    }
}

void SpinnerImage::timerEvent(QTimerEvent *event)
{
    if (event->timerId() == m_timer.timerId()) {
        m_step = (m_step + 1) % spokes;
        update();
    } else {
        QQuickPaintedItem::timerEvent(event);
    }
}

void SpinnerImage::itemChange(ItemChange change, const ItemChangeData &data)
{
    QQuickPaintedItem::itemChange(change, data);
    if (change == ItemVisibleHasChanged || change == ItemSceneChange) {
        updateTimer();
    }
}

void SpinnerImage::updateTimer()
{
    const bool turning = m_running && isVisible() && window() != nullptr;
    if (turning && !m_timer.isActive()) {
        m_timer.start(turnMilliseconds / spokes, this);
    } else if (!turning) {
        m_timer.stop();
    }
}

} // namespace trellisport
