#include "Chaos/Person.h"

#include <QGuiApplication>

#include <algorithm>
#include <iterator>
#include <numeric>
#include <vector>

namespace trellisport::chaos {

using std::chrono::milliseconds;

const Person::Habit Person::habits[] = {{"tap a control", 30, &Person::tapControl},
                                        {"answer", 22, &Person::answer},
                                        {"flick", 12, &Person::flick},
                                        {"change settings", 8, &Person::changeSettings},
                                        {"press a key", 7, &Person::pressKey},
                                        {"hear of something", 7, &Person::hear},
                                        {"pull", 6, &Person::pull},
                                        {"swipe back", 5, &Person::swipeBack},
                                        {"tap anywhere", 5, &Person::tapAnywhere},
                                        {"tap a control twice", 4, &Person::doubleTapControl},
                                        {"search", 3, &Person::search},
                                        {"compose", 2, &Person::compose},
                                        {"turn the phone", 2, &Person::turn},
                                        {"change the text size", 2, &Person::changeTextSize},
                                        {"hear nonsense", 1, &Person::hearNonsense},
                                        {"leave and return", 1, &Person::leaveAndReturn}};

namespace {

const std::vector<const char *> words{"Yes",
                                      "No, keep the old export format.",
                                      "Ask the client first; \"two\" options are enough & cheap.",
                                      "Großartig, weiter so",
                                      "はい、お願いします",
                                      "نعم، تابع",
                                      "👍🏽 👩‍👩‍👧",
                                      "   ",
                                      "<b>bold</b> https://agent.example/"};
const std::vector<QSize> sizes{{390, 844}, {844, 390}, {320, 568}, {1024, 768}, {360, 720}};

} // namespace

Person::Person(std::uint64_t seed, platform::ApplicationEntry &entry, Hand &hand, Agent &agent)
    : m_seed(seed)
    , m_entry(entry)
    , m_hand(hand)
    , m_agent(agent)
{
}

QQuickWindow *Person::window()
{
    for (QWindow *window : QGuiApplication::topLevelWindows()) {
        if (auto *quick = qobject_cast<QQuickWindow *>(window); quick && quick->isVisible()) {
            return quick;
        }
    }
    return nullptr;
}

milliseconds Person::step()
{
    m_chance = practice::Random(m_seed * 0x100000001ULL + static_cast<std::uint64_t>(++m_step));
    const auto add = [](int sum, const Habit &habit) { return sum + habit.weight; };
    const int all = std::accumulate(std::begin(habits), std::end(habits), 0, add);
    auto drawn = static_cast<int>(m_chance.between(1, all));
    const Habit *habit = std::begin(habits);
    while (drawn > habit->weight) {
        drawn -= habit->weight;
        ++habit;
    }
    const milliseconds rest(isRare(20)   ? 0
                            : isRare(12) ? m_chance.between(100, 500)
                                         : m_chance.between(10, 80));
    m_lastDeed = habit->name;
    ++m_deeds[habit->name];
    (this->*habit->deed)();
    return rest;
}

QPointF Person::anyPlace()
{
    const QSize size = window()->size();
    const auto x = static_cast<double>(m_chance.between(1, 999)) / 1000;
    const auto y = static_cast<double>(m_chance.between(1, 999)) / 1000;
    return {x * size.width(), y * size.height()};
}

void Person::tapControl()
{
    const Sight sight(*window());
    if (!sight.controls().isEmpty()) {
        const auto place = m_chance.between(0, sight.controls().size() - 1);
        m_hand.tap(*window(), Sight::middle(sight.controls().at(place)));
    }
}

void Person::doubleTapControl()
{
    const Sight sight(*window());
    if (!sight.controls().isEmpty()) {
        const auto place = m_chance.between(0, sight.controls().size() - 1);
        m_hand.doubleTap(*window(), Sight::middle(sight.controls().at(place)));
    }
}

void Person::tapAnywhere()
{
    m_hand.tap(*window(), anyPlace());
}

void Person::flick()
{
    const QPointF from = anyPlace();
    const QPointF to =
        isRare(25) ? QPointF(anyPlace().x(), from.y()) : QPointF(from.x(), anyPlace().y());
    m_hand.drag(*window(), from, to, static_cast<int>(m_chance.between(2, 8)));
}

void Person::pull()
{
    const QSizeF size = window()->size();
    m_hand.drag(*window(), {size.width() / 2, size.height() * 0.3},
                {size.width() / 2, size.height() * 0.9}, 10);
}

void Person::swipeBack()
{
    const double y = anyPlace().y();
    m_hand.drag(*window(), {3, y}, {window()->width() * (isRare(30) ? 0.2 : 0.8), y}, 6);
}

void Person::pressKey()
{
    static const std::vector<Qt::Key> keys{
        Qt::Key_Tab,  Qt::Key_Backtab,   Qt::Key_Return, Qt::Key_Space,    Qt::Key_Escape,
        Qt::Key_F5,   Qt::Key_Down,      Qt::Key_Up,     Qt::Key_PageDown, Qt::Key_End,
        Qt::Key_Home, Qt::Key_Backspace, Qt::Key_Delete, Qt::Key_Left,     Qt::Key_Right};
    m_hand.key(*window(), m_chance.pick(keys), isRare(15) ? Qt::ControlModifier : Qt::NoModifier);
}

void Person::tapOne(const Sight &sight, const QString &control, bool twice)
{
    const QList<QQuickItem *> found = sight.controls(control);
    if (found.isEmpty()) {
        return;
    }
    const QPointF place = Sight::middle(found.at(m_chance.between(0, found.size() - 1)));
    twice ? m_hand.doubleTap(*window(), place) : m_hand.tap(*window(), place);
}

void Person::tapRootTab(const Sight &sight, int tab)
{
    const QList<QQuickItem *> tabs = sight.controls(QStringLiteral("rootTab"));
    if (tab < tabs.size()) {
        m_hand.tap(*window(), Sight::middle(tabs.at(tab)));
    }
}

void Person::fill(QQuickItem *field, const QString &text)
{
    m_hand.tap(*window(), Sight::middle(field));
    if (isRare(50)) {
        m_hand.key(*window(), Qt::Key_A, Qt::ControlModifier);
    }
    m_hand.type(*window(), text);
}

/// Types into an editor that is seen and sends it; or goes one step on towards one.
void Person::answer()
{
    const Sight sight(*window());
    if (const QQuickItem *editor = sight.item(QStringLiteral("answerField"))) {
        for (QQuickItem *field : sight.fields()) {
            if (editor->isAncestorOf(field)) {
                fill(field, QStringLiteral("%1 %2").arg(m_step).arg(
                                QString::fromUtf8(m_chance.pick(words))));
                break;
            }
        }
        tapOne(Sight(*window()), QStringLiteral("submitButton"), isRare(30));
    } else if (!sight.controls(QStringLiteral("tabButton")).isEmpty()) {
        goToDecisions(sight);
    } else if (!sight.controls(QStringLiteral("projectRow")).isEmpty()) {
        goToProject(sight);
    } else if (sight.item(QStringLiteral("chipStrip")) != nullptr) {
        showMoreProjects(sight);
    } else {
        tapRootTab(sight, 1);
    }
}

/// Nothing is found: a search is given up, or the chips.
void Person::showMoreProjects(const Sight &sight)
{
    if (!sight.fields().isEmpty() && isRare(50)) {
        m_hand.replace(*window(), Sight::middle(sight.fields().first()), {});
        return;
    }
    for (const QQuickItem *control : sight.controls()) {
        if (control->property("label").toString() == QLatin1String("All")) {
            m_hand.tap(*window(), Sight::middle(control));
            return;
        }
    }
    const QPointF strip = Sight::middle(sight.item(QStringLiteral("chipStrip")));
    m_hand.drag(*window(), strip, strip + QPointF(150, 0), 4);
}

void Person::goToDecisions(const Sight &sight)
{
    const auto tabs = sight.controls(QStringLiteral("tabButton"));
    for (const QQuickItem *tab : tabs) {
        if (tab->property("text").toString() != QLatin1String("Decisions")) {
            continue;
        }
        if (!tab->property("checked").toBool()) {
            m_hand.tap(*window(), Sight::middle(tab));
        } else if (isRare(50)) {
            m_hand.key(*window(), Qt::Key_Escape);
        } else {
            flick();
        }
        return;
    }
    m_hand.drag(*window(), Sight::middle(tabs.last()), Sight::middle(tabs.first()), 4);
}

/// It is the awarded projects whose decisions wait.
void Person::goToProject(const Sight &sight)
{
    for (const QQuickItem *chip : sight.controls()) {
        if (!chip->objectName().startsWith(QLatin1String("chip"))) {
            continue;
        }
        if (chip->property("label").toString() == QLatin1String("Awarded")) {
            if (!chip->property("isSelected").toBool() && isRare(60)) {
                m_hand.tap(*window(), Sight::middle(chip));
                return;
            }
            break;
        }
        if (isRare(30)) {
            m_hand.drag(*window(), Sight::middle(chip) + QPointF(200, 0), Sight::middle(chip), 4);
            return;
        }
    }
    tapOne(sight, QStringLiteral("projectRow"));
}

void Person::changeSettings()
{
    const Sight sight(*window());
    if (sight.item(QStringLiteral("sections")) == nullptr) {
        tapRootTab(sight, 2);
        return;
    }
    if (!sight.fields().isEmpty()) {
        fill(m_chance.pick(std::vector(sight.fields().begin(), sight.fields().end())),
             QString::number(m_chance.between(0, 9999)));
    }
    tapOne(Sight(*window()), QStringLiteral("saveButton"), isRare(30));
}

void Person::search()
{
    const Sight sight(*window());
    for (QQuickItem *field : sight.fields()) {
        fill(field, isRare(40)
                        ? QString()
                        : QString(QLatin1Char(static_cast<char>(m_chance.between('a', 'z')))));
        return;
    }
}

void Person::compose()
{
    m_hand.compose(isRare(50) ? QString() : QStringLiteral("unfinished"));
}

void Person::turn()
{
    window()->resize(m_chance.pick(sizes));
}

void Person::changeTextSize()
{
    chaosPlatform().playedAppearance().setTextScale(static_cast<double>(m_chance.between(8, 20)) /
                                                    10);
}

void Person::hear()
{
    static const std::vector<std::string> events{"decision", "decision", "award", "error",
                                                 "message",  "work",     "bid"};
    const QQuickItem *workspace = Sight(*window()).item(QStringLiteral("workspace"));
    std::string project;
    if (workspace != nullptr && isRare(70)) {
        project = workspace->property("projectId").toString().toStdString();
    }
    const std::string &event = m_chance.pick(events);
    m_agent.happen(event, project, isRare(60));
}

void Person::hearNonsense()
{
    const auto kind = static_cast<unsigned>(m_chance.between(0, 99));
    m_agent.deliverNonsense(kind, isRare(60));
}

void Person::leaveAndReturn()
{
    if (isRare(50)) {
        window()->hide();
    } else {
        m_entry.closeWindow();
    }
    m_entry.showWindow();
}

} // namespace trellisport::chaos
