#include "Screens/Measurements.h"

#include "Screens/Scene.h"
#include "Support/Bodies.h"
#include "Support/Series.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>

#include <algorithm>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace trellisport::bench {

namespace {

/// The fastest that a list moves by itself, 2,500 points a second, at 60 frames a second.
constexpr double flickStep = 2500.0 / 60;

std::string nameOf(const std::string &figure, const std::string &list, std::size_t size)
{
    return figure + "/" + list + "/" + std::to_string(size);
}

std::vector<double> emptyFrames(int frames)
{
    QQuickWindow window;
    window.resize(390, 844);
    window.setColor(Qt::black);
    window.show();
    settle();
    std::vector<double> milliseconds;
    for (int frame = 0; frame < frames; ++frame) {
        window.setColor(frame % 2 == 0 ? Qt::black : Qt::darkGray);
        milliseconds.push_back(millisecondsOf([&] { drawFrame(window); }));
    }
    return milliseconds;
}

void reportMemory(const std::string &name, Scene &scene)
{
    (void)scene.open();
    settle();
    const Memory memory = memoryNow();
    report("open-allocated/" + name, "B", {memory.allocated});
    report("open-resident/" + name, "B", {memory.resident});
    report("open-reply/" + name, "B", {static_cast<double>(scene.replySize())});
}

/// Sends an event, then draws: how long each took.
class Reaction {
public:
    explicit Reaction(std::string name)
        : m_name(std::move(name))
    {
    }
    template <typename Act>
    void time(QQuickWindow &window, const Act &act)
    {
        const double acting = millisecondsOf(act);
        m_updated.push_back(acting);
        m_painted.push_back(acting + millisecondsOf([&] { drawFrame(window); }));
        QCoreApplication::processEvents();
    }
    void report(const std::string &size) const
    {
        bench::report(m_name + "-updated/" + size, "ms", m_updated);
        bench::report(m_name + "-painted/" + size, "ms", m_painted);
    }

private:
    std::string m_name;
    std::vector<double> m_updated;
    std::vector<double> m_painted;
};

void press(QQuickItem *field, int key, const QString &text)
{
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, text);
    QCoreApplication::sendEvent(field, &event);
}

void sendMouse(QQuickWindow &window, QEvent::Type type, QPointF place)
{
    QMouseEvent event(type, place, window.mapToGlobal(place), Qt::LeftButton,
                      type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(&window, &event);
}

int rowsOf(const Scene &scene)
{
    return scene.list()->property("count").toInt();
}

void mustDiffer(int was, int is, const char *what)
{
    if (was == is) {
        throw std::runtime_error(std::string(what) + " changed nothing");
    }
}

} // namespace

void measureOpening(const std::string &list, std::size_t size, int repetitions)
{
    const Subject &subject = subjectNamed(list);
    const std::string body = subject.body(size);
    std::vector<double> opening;
    std::vector<double> decoding;
    for (int repetition = 0; repetition < repetitions; ++repetition) {
        {
            Scene scene(subject, [&] { return received(body); });
            opening.push_back(scene.open());
        }
        settle();
        decoding.push_back(subject.decodeMilliseconds(received(body)));
    }
    report(nameOf("open", list, size), "ms", opening);
    report(nameOf("open-decode", list, size), "ms", decoding);
}

void measureFlick(const std::string &renderer, const std::string &list, std::size_t size,
                  int frames)
{
    const Subject &subject = subjectNamed(list);
    Scene scene(subject, [&] { return subject.body(size); });
    (void)scene.open();
    settle();
    std::vector<double> milliseconds;
    double place = scene.list()->property("contentY").toDouble();
    for (int frame = 0; frame < frames; ++frame) {
        place += flickStep;
        milliseconds.push_back(millisecondsOf([&] {
            scene.list()->setProperty("contentY", place);
            drawFrame(scene.window());
        }));
    }
    report(nameOf("flick-" + renderer, list, size), "ms", milliseconds);
    scene.window().hide();
    report(nameOf("empty-" + renderer, list, size), "ms", emptyFrames(frames));
}

void measureMemory(const std::string &list, std::size_t size)
{
    const Subject &subject = subjectNamed(list);
    Scene scene(subject, [&] { return subject.body(size); });
    reportMemory(list + "/" + std::to_string(size), scene);
}

void measureMemoryOfFile(const std::string &list, const std::string &file)
{
    Scene scene(subjectNamed(list), [&] {
        std::ostringstream text;
        text << std::ifstream(file).rdbuf();
        return received(text.str());
    });
    reportMemory(list + "/ordinary", scene);
}

void measureFilter(std::size_t size, int repetitions)
{
    const Subject &subject = subjectNamed("projects");
    Scene scene(subject, [&] { return subject.body(size); });
    (void)scene.open();
    settle();
    const int all = rowsOf(scene);

    Reaction keystroke("keystroke");
    QQuickItem *field = scene.find(QStringLiteral("searchField"));
    field->forceActiveFocus(Qt::MouseFocusReason);
    const QString typed = QStringLiteral("deploy");
    for (int repetition = 0; repetition < repetitions; ++repetition) {
        for (const QChar letter : typed) {
            keystroke.time(scene.window(), [&] { press(field, 0, letter); });
        }
        mustDiffer(all, rowsOf(scene), "the search");
        for (qsizetype letter = 0; letter < typed.size(); ++letter) {
            keystroke.time(scene.window(), [&] { press(field, Qt::Key_Backspace, {}); });
        }
    }
    keystroke.report(std::to_string(size));

    Reaction tap("chip");
    for (int repetition = 0; repetition < repetitions * 2; ++repetition) {
        const QQuickItem *chip = scene.find(QStringLiteral("chip1"));
        const QPointF place = chip->mapToScene(QPointF(chip->width() / 2, chip->height() / 2));
        const int before = rowsOf(scene);
        sendMouse(scene.window(), QEvent::MouseButtonPress, place);
        tap.time(scene.window(),
                 [&] { sendMouse(scene.window(), QEvent::MouseButtonRelease, place); });
        mustDiffer(before, rowsOf(scene), "the chip");
    }
    tap.report(std::to_string(size));
}

} // namespace trellisport::bench
