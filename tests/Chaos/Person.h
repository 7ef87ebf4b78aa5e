#pragma once

#include "Chaos/Agent.h"
#include "Chaos/Hand.h"
#include "Chaos/Sight.h"
#include "Platform/Application.h"
#include "PracticeService/Random.h"

#include <QQuickWindow>

#include <chrono>
#include <cstdint>
#include <map>
#include <string>

namespace trellisport::chaos {

/// Somebody who uses the console without rest or plan. What is done at the Nth step, and where,
/// rests on the seed and N alone; what it meets there also on what the service has answered so far.
class Person {
public:
    /// All must outlive the person. The entry's window is there.
    Person(std::uint64_t seed, platform::ApplicationEntry &entry, Hand &hand, Agent &agent);

    /// Does one thing, and gives how long it takes until the next.
    std::chrono::milliseconds step();

    /// The window that is there now. It changes when the person closes and opens it.
    [[nodiscard]] static QQuickWindow *window();

    [[nodiscard]] long steps() const { return m_step; }
    [[nodiscard]] const char *lastDeed() const { return m_lastDeed; }
    /// How often each thing was done.
    [[nodiscard]] const std::map<std::string, int> &deeds() const { return m_deeds; }

private:
    using Deed = void (Person::*)();
    struct Habit {
        const char *name;
        int weight;
        Deed deed;
    };
    static const Habit habits[];

    void tapControl();
    void doubleTapControl();
    void tapAnywhere();
    void flick();
    void pull();
    void swipeBack();
    void pressKey();
    void answer();
    void changeSettings();
    void search();
    void compose();
    void turn();
    void changeTextSize();
    void hear();
    void hearNonsense();
    void leaveAndReturn();

    void goToDecisions(const Sight &sight);
    void goToProject(const Sight &sight);
    void showMoreProjects(const Sight &sight);
    void tapRootTab(const Sight &sight, int tab);
    void tapOne(const Sight &sight, const QString &control, bool twice = false);
    void fill(QQuickItem *field, const QString &text);
    [[nodiscard]] bool isRare(int percent) { return m_chance.chance(percent); }
    [[nodiscard]] QPointF anyPlace();

    std::uint64_t m_seed;
    platform::ApplicationEntry &m_entry;
    Hand &m_hand;
    Agent &m_agent;
    practice::Random m_chance{0}; ///< of this step
    long m_step = 0;
    const char *m_lastDeed = "";
    std::map<std::string, int> m_deeds;
};

} // namespace trellisport::chaos
