#include "Chaos/Agent.h"
#include "Chaos/ChaosPlatform.h"
#include "Chaos/Gauges.h"
#include "Chaos/Person.h"
#include "Chaos/Round.h"
#include "Chaos/Spin.h"
#include "Shell/TrellisportManagerApp.h"

#include <QCommandLineParser>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QQmlEngine>

#include <iostream>

using namespace trellisport;
using namespace trellisport::chaos;
using std::chrono::milliseconds;

namespace {

const Person *tellingPerson = nullptr;

/// What the toolkit and our own code warn about, with what the person did last.
void warn(QtMsgType type, const QMessageLogContext & /*context*/, const QString &message)
{
    if (type != QtDebugMsg && type != QtInfoMsg) {
        std::cerr << "after step " << (tellingPerson ? tellingPerson->steps() : 0) << ", \""
                  << (tellingPerson ? tellingPerson->lastDeed() : "")
                  << "\": " << message.toStdString() << std::endl;
    }
}

/// The console in the hands of a person, from its start to its end, and what was read meanwhile.
class Run {
public:
    explicit Run(std::uint64_t seed)
        : m_person(seed, m_app, m_hand, m_agent)
    {
        tellingPerson = &m_person;
        qInstallMessageHandler(warn);
        m_platform.playedApplication().setOnRegister([this] {
            m_app.delegate().didRegisterForRemoteNotifications({1, 2, 3, 4});
        });
    }

    Run(const Run &) = delete;
    Run &operator=(const Run &) = delete;
    ~Run() { tellingPerson = nullptr; }

    /// checkpoints: how often within these steps the console is put to rest and read.
    void live(long steps, int checkpoints)
    {
        m_app.delegate().didFinishLaunching();
        m_app.showWindow();
        readAtRest();
        m_heart.beginAnew();
        for (int part = 1; part <= checkpoints; ++part) {
            while (m_person.steps() < steps * part / checkpoints) {
                spin(m_person.step());
                look();
            }
            readAtRest();
        }
        m_inTrouble = whatWasSeen();
        m_troubles = QString::fromStdString(m_agent.endTrouble());
        m_places = {};
        for (const QString &undone :
             Round(m_platform, m_hand, m_agent, [this] { look(); }).make()) {
            complain(QStringLiteral("in the last round: %1").arg(undone));
        }
        awaitQuiet();
        m_app.closeWindow();
    }

    [[nodiscard]] QJsonObject report() const;

private:
    void complain(const QString &what)
    {
        m_complaints.append(QStringLiteral("step %1: %2").arg(m_person.steps()).arg(what));
    }

    void awaitQuiet()
    {
        if (!await([this] { return m_platform.watchedSession().underWay() == 0; })) {
            complain(QStringLiteral("an exchange does not end"));
        }
    }

    /// Notes where one is, and what must never be seen, whatever the service sends.
    void look()
    {
        const Sight sight(*Person::window());
        m_places.look(sight);
        for (const QString &text : sight.texts()) {
            if (text.contains(QLatin1String("of a fault")) ||
                text.contains(QLatin1String("asked for by a test"))) {
                complain(QStringLiteral("shows \"%1\"").arg(text));
            }
        }
    }

    /// Back to the dashboard by hand, tab after tab, so that it is seen that the console responds.
    void goHome();
    void readAtRest();
    [[nodiscard]] QJsonObject whatWasSeen() const;

    ChaosPlatform &m_platform = chaosPlatform();
    Hand m_hand;
    Agent m_agent{m_platform};
    TrellisportManagerApp m_app;
    Person m_person;
    Heartbeat m_heart{patience};
    QElapsedTimer m_time = [] {
        QElapsedTimer timer;
        timer.start();
        return timer;
    }();
    QJsonArray m_readings;
    QJsonArray m_complaints;
    Places m_places;
    QJsonObject m_inTrouble; ///< what was seen before the last round
    QString m_troubles;
};

void Run::goHome()
{
    if (Person::window() == nullptr) {
        complain(QStringLiteral("there is no window"));
        m_app.showWindow();
    }
    const auto sees = [](const char *name) {
        return Sight(*Person::window()).item(QLatin1String(name)) != nullptr;
    };
    const auto tapTab = [&](int tab) {
        const auto tabs = Sight(*Person::window()).controls(QStringLiteral("rootTab"));
        if (tabs.size() == 3) {
            m_hand.tap(*Person::window(), Sight::middle(tabs.at(tab)));
        }
    };
    Person::window()->resize(390, 844);
    m_platform.playedAppearance().setTextScale(1);
    spin(calm);
    tapTab(1);
    spin(calm);
    for (int page = 0; page < 10 && sees("workspace"); ++page) {
        m_hand.key(*Person::window(), Qt::Key_Escape);
        spin(calm);
    }
    const char *const screens[] = {"dashboardScroll", "projectsList", "settingsScroll"};
    for (const int tab : {1, 2, 0}) {
        tapTab(tab);
        if (!await([&] { return sees(screens[tab]); })) {
            complain(QStringLiteral("root tab %1 does not come").arg(tab));
        }
        spin(calm);
    }
}

void Run::readAtRest()
{
    goHome();
    awaitQuiet();
    if (QQmlEngine *engine = qmlEngine(Person::window()->contentItem()->childItems().value(0))) {
        engine->collectGarbage();
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    const Holdings read = holdings();
    m_readings.append(QJsonObject{{QStringLiteral("seconds"), m_time.elapsed() / 1000},
                                  {QStringLiteral("steps"), qint64{m_person.steps()}},
                                  {QStringLiteral("allocated"), qint64(read.allocated)},
                                  {QStringLiteral("resident"), qint64(read.resident)},
                                  {QStringLiteral("files"), read.files},
                                  {QStringLiteral("threads"), read.threads}});
}

QJsonObject Run::whatWasSeen() const
{
    QJsonObject places;
    for (const auto &[name, count] : m_places.seen()) {
        places.insert(QString::fromStdString(name), count);
    }
    return {{QStringLiteral("places"), places},
            {QStringLiteral("writes"), int(m_platform.watchedSession().writes().size())},
            {QStringLiteral("opened"), m_platform.notifications().opened()}};
}

QJsonObject Run::report() const
{
    QJsonArray writes;
    for (const SentWrite &write : m_platform.watchedSession().writes()) {
        writes.append(
            QJsonObject{{QStringLiteral("method"), QString::fromStdString(write.method)},
                        {QStringLiteral("url"), QString::fromStdString(write.url)},
                        {QStringLiteral("body"), QString::fromStdString(write.body)},
                        {QStringLiteral("outcome"), QString::fromStdString(write.outcome)},
                        {QStringLiteral("may_be_lost"), write.mayBeLost}});
    }
    QJsonArray presses;
    for (const WritingPress &press : m_hand.presses()) {
        presses.append(
            QJsonObject{{QStringLiteral("button"), QString::fromStdString(press.button)},
                        {QStringLiteral("question"), QString::fromStdString(press.question)},
                        {QStringLiteral("text"), QString::fromStdString(press.text)}});
    }
    QJsonObject deeds;
    for (const auto &[name, count] : m_person.deeds()) {
        deeds.insert(QString::fromStdString(name), count);
    }
    return {{QStringLiteral("seconds"), m_time.elapsed() / 1000},
            {QStringLiteral("time_lapse"), timeLapse},
            {QStringLiteral("steps"), qint64{m_person.steps()}},
            {QStringLiteral("deeds"), deeds},
            {QStringLiteral("exchanges"), m_platform.watchedSession().sent()},
            {QStringLiteral("happenings"), m_agent.happened()},
            {QStringLiteral("notifications"), m_platform.notifications().presented()},
            {QStringLiteral("opened"), m_platform.notifications().opened()},
            {QStringLiteral("links"), m_platform.links().opened()},
            {QStringLiteral("presses"), presses},
            {QStringLiteral("writes"), writes},
            {QStringLiteral("readings"), m_readings},
            {QStringLiteral("complaints"), m_complaints},
            {QStringLiteral("turns"), qint64{m_heart.turns()}},
            {QStringLiteral("longest_turn_ms"), qint64{m_heart.longestTurn().count()}},
            {QStringLiteral("longest_held_ms"), qint64{m_heart.longestHeld().count()}},
            {QStringLiteral("in_trouble"), m_inTrouble},
            {QStringLiteral("troubles"), m_troubles},
            {QStringLiteral("last_round"), whatWasSeen()}};
}

} // namespace

int main(int argc, char *argv[])
{
    QGuiApplication application(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "The console in the hands of somebody who taps at random, against the service that "
        "TRELLISPORT_BASE_URL names. Tells on standard output, as JSON, what was done and read."));
    parser.addHelpOption();
    const QCommandLineOption seed(QStringLiteral("seed"), QStringLiteral("what the chance is"),
                                  QStringLiteral("N"), QStringLiteral("1"));
    const QCommandLineOption steps(QStringLiteral("steps"), QStringLiteral("how long it lasts"),
                                   QStringLiteral("N"), QStringLiteral("390"));
    const QCommandLineOption points(QStringLiteral("checkpoints"),
                                    QStringLiteral("how often it rests and is read"),
                                    QStringLiteral("N"), QStringLiteral("6"));
    parser.addOptions({seed, steps, points});
    parser.process(application);
    chaosPlatform().queue().wake();

    QJsonObject report;
    {
        Run run(parser.value(seed).toULongLong());
        run.live(parser.value(steps).toLong(), parser.value(points).toInt());
        report = run.report();
    }
    chaosPlatform().end();
    std::cout << QJsonDocument(report).toJson(QJsonDocument::Compact).toStdString() << std::endl;
    return 0;
}
