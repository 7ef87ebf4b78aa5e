#include "Chaos/Round.h"

#include "Chaos/Person.h"
#include "Chaos/Spin.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace trellisport::chaos {

namespace {

constexpr int tries = 12;
/// From one end of a screen that may be long to the other.
constexpr int moves = 60;
const QStringList tabLabels{QStringLiteral("Overview"),  QStringLiteral("Questions"),
                            QStringLiteral("Chat"),      QStringLiteral("Bids"),
                            QStringLiteral("Dev"),       QStringLiteral("Logs"),
                            QStringLiteral("Decisions"), QStringLiteral("Reports")};

QString labelOf(const QQuickItem *tab)
{
    return tab->property("text").toString();
}

bool isSelected(const Sight &sight, const QString &label)
{
    const auto tabs = sight.controls(QStringLiteral("tabButton"));
    return std::any_of(tabs.begin(), tabs.end(), [&](const QQuickItem *tab) {
        return labelOf(tab) == label && tab->property("checked").toBool();
    });
}

/// What decides which projects are shown, for whoever reads why they were not.
QString seenOfProjects()
{
    const Sight sight(*Person::window());
    QStringList seen;
    for (const QQuickItem *field : sight.fields()) {
        seen << QStringLiteral("a field with \"%1\" and \"%2\" being composed")
                    .arg(field->property("text").toString(),
                         field->property("preeditText").toString());
    }
    for (const QQuickItem *control : sight.controls()) {
        seen << control->objectName() + QLatin1Char(' ') + control->property("label").toString() +
                    (control->property("isSelected").toBool() ? QStringLiteral(" (selected)")
                                                              : QString());
    }
    return seen.join(QStringLiteral(", "));
}

} // namespace

void Places::look(const Sight &sight)
{
    for (const auto &[item, name] : {std::pair("dashboardScroll", "Dashboard"),
                                     {"projectsList", "Projects"},
                                     {"sections", "Settings"}}) {
        m_seen[name] += sight.item(QLatin1String(item)) != nullptr;
    }
    for (const QString &label : tabLabels) {
        m_seen[label.toStdString()] += isSelected(sight, label);
    }
}

Round::Round(ChaosPlatform &platform, Hand &hand, Agent &agent, std::function<void()> look)
    : m_platform(platform)
    , m_hand(hand)
    , m_agent(agent)
    , m_look(std::move(look))
{
}

QStringList Round::make()
{
    m_undone.clear();
    openNotification();
    answer();
    visitTabs();
    changeSettings();
    visitRoots();
    return m_undone;
}

void Round::rest()
{
    spin(calm);
    if (!await([this] { return m_platform.watchedSession().underWay() == 0; })) {
        m_undone << QStringLiteral("an exchange does not end");
    }
    m_look();
}

bool Round::comes(const std::function<bool(const Sight &)> &condition)
{
    const bool came = await([&] { return condition(Sight(*Person::window())); });
    rest();
    return came;
}

void Round::showAllProjects()
{
    showRoot(1, "projectsList");
    pullToTop();
    for (int i = 0; i < tries; ++i) {
        const Sight sight(*Person::window());
        const auto all = std::find_if(
            sight.controls().begin(), sight.controls().end(), [](const QQuickItem *control) {
                return control->property("label").toString() == QLatin1String("All");
            });
        const QQuickItem *strip = sight.item(QStringLiteral("chipStrip"));
        if (!sight.fields().isEmpty() &&
            !sight.fields().first()->property("text").toString().isEmpty()) {
            m_hand.replace(*Person::window(), Sight::middle(sight.fields().first()), {});
        } else if (all == sight.controls().end() && strip != nullptr) {
            // Further left.
            m_hand.drag(*Person::window(), Sight::middle(strip),
                        Sight::middle(strip) + QPointF(150, 0), 4);
        } else if (all != sight.controls().end() && !(*all)->property("isSelected").toBool()) {
            m_hand.tap(*Person::window(), Sight::middle(*all));
        } else if (all != sight.controls().end()) {
            return;
        }
        rest();
    }
    m_undone << QStringLiteral("not all projects are shown: %1").arg(seenOfProjects());
}

void Round::pullToTop()
{
    for (int i = 0; i < moves; ++i) {
        const QQuickItem *list = Sight(*Person::window()).item(QStringLiteral("projectsList"));
        if (list == nullptr) {
            break;
        }
        const double before = list->property("contentY").toDouble();
        m_hand.drag(*Person::window(), {195, 300}, {195, 600}, 4);
        rest();
        // Less than a point is left of the way back from beyond the top.
        if (std::abs(list->property("contentY").toDouble() - before) < 1) {
            return;
        }
    }
    m_undone << QStringLiteral("the projects have no top");
}

void Round::openNotification()
{
    showAllProjects();
    for (int row = 0; row < tries; ++row) {
        const auto rows = Sight(*Person::window()).controls(QStringLiteral("projectRow"));
        if (row >= rows.size()) {
            break;
        }
        m_hand.tap(*Person::window(), Sight::middle(rows.at(row)));
        QString project;
        if (!comes([&](const Sight &sight) {
                const QQuickItem *workspace = sight.item(QStringLiteral("workspace"));
                project = workspace ? workspace->property("projectId").toString() : QString();
                return workspace != nullptr;
            })) {
            break;
        }
        showRoot(0, "dashboardScroll");
        // A notification of no kind, or the one to come might ask for what the last one asked for.
        m_agent.deliverNonsense(0, true);
        rest();
        const int before = m_agent.happened();
        const int ended = m_agent.ended();
        m_agent.happen("decision", project.toStdString(), true);
        if (await([&] { return m_agent.ended() > ended; }) && m_agent.happened() > before) {
            if (!comes([&](const Sight &sight) {
                    const QQuickItem *workspace = sight.item(QStringLiteral("workspace"));
                    return workspace != nullptr &&
                           workspace->property("projectId").toString() == project &&
                           isSelected(sight, QStringLiteral("Decisions"));
                })) {
                break;
            }
            return;
        }
        showRoot(1, "projectsList");
    }
    m_undone << QStringLiteral("an opened notification does not lead to its question");
}

void Round::answer()
{
    for (int i = 0; i < moves; ++i) {
        const Sight sight(*Person::window());
        const QQuickItem *editor = sight.item(QStringLiteral("answerField"));
        const auto &fields = sight.fields();
        const auto field = std::find_if(fields.begin(), fields.end(), [&](const QQuickItem *one) {
            return editor != nullptr && editor->isAncestorOf(one);
        });
        if (field != fields.end()) {
            m_hand.tap(*Person::window(), Sight::middle(*field));
            m_hand.type(*Person::window(), QStringLiteral("As planned."));
            if (writes("submitButton", "/answer")) {
                return;
            }
        }
        moveUp();
    }
    m_undone << QStringLiteral("no answer is sent");
}

void Round::visitTabs()
{
    for (const QString &label : tabLabels) {
        if (!selectTab(label)) {
            m_undone << QStringLiteral("the tab %1 does not come").arg(label);
        }
    }
}

bool Round::selectTab(const QString &label)
{
    for (int i = 0; i < tries; ++i) {
        const Sight sight(*Person::window());
        const auto tabs = sight.controls(QStringLiteral("tabButton"));
        const auto tab = std::find_if(tabs.begin(), tabs.end(),
                                      [&](const QQuickItem *one) { return labelOf(one) == label; });
        if (tab != tabs.end()) {
            m_hand.tap(*Person::window(), Sight::middle(*tab));
        } else if (!tabs.isEmpty()) {
            const bool isBehind =
                tabLabels.indexOf(label) > tabLabels.indexOf(labelOf(tabs.first()));
            const QPointF first = Sight::middle(tabs.first());
            const QPointF last = Sight::middle(tabs.last());
            m_hand.drag(*Person::window(), isBehind ? last : first, isBehind ? first : last, 10);
        }
        rest();
        if (isSelected(Sight(*Person::window()), label)) {
            return true;
        }
    }
    return false;
}

void Round::changeSettings()
{
    if (!showRoot(2, "sections")) {
        return;
    }
    const Sight sight(*Person::window());
    if (!sight.fields().isEmpty()) {
        m_hand.replace(*Person::window(), Sight::middle(sight.fields().first()),
                       QStringLiteral("12"));
    }
    for (int i = 0; i < moves; ++i) {
        if (writes("saveButton", "/config")) {
            return;
        }
        moveUp();
    }
    m_undone << QStringLiteral("no settings are saved");
}

void Round::visitRoots()
{
    showRoot(0, "dashboardScroll");
    showRoot(1, "projectsList");
}

bool Round::showRoot(int tab, const char *screen)
{
    for (int i = 0; i < tries; ++i) {
        const auto tabs = Sight(*Person::window()).controls(QStringLiteral("rootTab"));
        if (tab < tabs.size()) {
            m_hand.tap(*Person::window(), Sight::middle(tabs.at(tab)));
        }
        rest();
        if (Sight(*Person::window()).item(QLatin1String(screen)) != nullptr) {
            return true;
        }
        // A workspace covers the projects.
        m_hand.key(*Person::window(), Qt::Key_Escape);
        rest();
    }
    m_undone << QStringLiteral("%1 does not come").arg(QLatin1String(screen));
    return false;
}

bool Round::writes(const char *button, const std::string &path)
{
    const std::size_t presses = m_hand.presses().size();
    const int before = accepted(path);
    const auto buttons = Sight(*Person::window()).controls(QLatin1String(button));
    if (!buttons.isEmpty()) {
        m_hand.tap(*Person::window(), Sight::middle(buttons.last()));
    }
    rest();
    return m_hand.presses().size() == presses + 1 && accepted(path) == before + 1;
}

int Round::accepted(const std::string &path) const
{
    const auto writes = m_platform.watchedSession().writes();
    return static_cast<int>(
        std::count_if(writes.begin(), writes.end(), [&](const SentWrite &write) {
            return write.url.ends_with(path) && write.outcome == "status 200";
        }));
}

void Round::moveUp()
{
    const QSizeF size = Person::window()->size();
    m_hand.drag(*Person::window(), {size.width() / 2, size.height() * 0.65},
                {size.width() / 2, size.height() * 0.45}, 10);
    rest();
}

} // namespace trellisport::chaos
