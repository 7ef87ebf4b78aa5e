#include "ScreenFaults/AnyScreen.h"

#include "Dashboard/DashboardViewModel.h"
#include "Platform/Platform.h"
#include "ProjectDetail/Bids/BidsViewModel.h"
#include "ProjectDetail/Decisions/DecisionsViewModel.h"
#include "ProjectDetail/ProjectDetailViewModel.h"
#include "ProjectsList/ProjectsListViewModel.h"
#include "ServiceAccess/RecordCoding.h"
#include "ServiceAccess/ServiceAddress.h"
#include "Settings/SettingsViewModel.h"
#include "Support/InlineExecutor.h"
#include "Support/ManualClock.h"

#include <QAbstractItemModel>
#include <QMetaProperty>
#include <QVariant>

#include <utility>

namespace trellisport::test {

namespace {

/// A value as text; of a value type, all its properties.
std::string read(const QVariant &value)
{
    if (const QMetaObject *type = value.metaType().metaObject();
        type != nullptr && !value.metaType().flags().testFlag(QMetaType::PointerToQObject)) {
        std::string text;
        for (int place = 0; place < type->propertyCount(); ++place) {
            text += read(type->property(place).readOnGadget(value.constData())) + ' ';
        }
        return text;
    }
    return value.toString().toStdString();
}

std::string read(const QAbstractItemModel &rows)
{
    std::string text;
    for (int row = 0; row < rows.rowCount(); ++row) {
        const auto names = rows.roleNames();
        for (auto role = names.begin(); role != names.end(); ++role) {
            text +=
                role.value().toStdString() + '=' + read(rows.index(row, 0).data(role.key())) + '\n';
        }
    }
    return text;
}

const platform::TextRules &rules()
{
    return platform::Platform::current().textRules();
}

NotificationManager &notifications()
{
    static NotificationManager manager;
    return manager;
}

AnyScreen dashboard(TrellisportAPI &api)
{
    static ManualClock clock;
    auto model = std::make_shared<DashboardViewModel>(api, clock);
    return {model,
            [model = model.get()] {
                std::string text;
                for (const StatCardData &card : model->statCards()) {
                    text += card.value.toStdString() + ' ';
                }
                return text;
            },
            [model = model.get()] { model->refresh(); }};
}

AnyScreen projects(TrellisportAPI &api)
{
    auto model = std::make_shared<ProjectsListViewModel>(api, rules(), InlineExecutor::shared(),
                                                         notifications());
    return {model, [model = model.get()] { return read(*model->rows()); },
            [model = model.get()] { model->refresh(); }};
}

AnyScreen settings(TrellisportAPI &api)
{
    static ManualClock clock;
    auto model = std::make_shared<SettingsViewModel>(
        api, clock, parseServiceAddress("https://agent.example/api/v1"));
    return {model, [model = model.get()] { return model->maxDailyBids().toStdString(); }, {}};
}

AnyScreen workspace(TrellisportAPI &api)
{
    auto model = std::make_shared<ProjectDetailViewModel>(api, rules(), notifications(), "p1");
    return {model, [model = model.get()] { return model->title().toStdString(); }, {}};
}

/// A tab of a workspace, as the workspace makes it.
template <auto make>
AnyScreen tab(TrellisportAPI &api)
{
    const auto owner =
        std::make_shared<ProjectDetailViewModel>(api, rules(), notifications(), "p1");
    auto *model = (owner.get()->*make)(nullptr);
    return {std::shared_ptr<ScreenModel>(model, [owner](ScreenModel *tab) { delete tab; }),
            [model] { return read(*static_cast<ListScreenModel *>(model)->rows()); },
            {}};
}

AnyScreen bids(TrellisportAPI &api)
{
    ProjectRecord record;
    record.project =
        std::make_shared<const ProjectDetail>(decode<ProjectDetail>(R"({"id":"p1","title":"a"})"));
    auto model = std::make_shared<BidsViewModel>(api, rules(), record);
    return {model, [model = model.get()] { return read(*model->rows()); }, {}};
}

std::string list(const std::string &element)
{
    return '[' + element + ']';
}

/// A list of one record that is whole, and of another that is not.
ScreenKind listTab(const char *name, const char *url, const std::string &first,
                   const std::string &second, std::function<AnyScreen(TrellisportAPI &)> make)
{
    return {name, url, list(first), list(second), std::move(make)};
}

} // namespace

void PrintTo(const ScreenKind &kind, std::ostream *stream)
{
    *stream << kind.name;
}

const std::vector<ScreenKind> &screenKinds()
{
    using Workspace = ProjectDetailViewModel;
    static const std::vector<ScreenKind> kinds{
        {"Dashboard", "/dashboard",
         R"({"status_counts":{},"bids_pending":1,"total_earned":2,"pending_decisions":1})",
         R"({"status_counts":{},"bids_pending":1,"total_earned":2,"pending_decisions":2})",
         dashboard},
        {"Projects", "/projects", R"([{"id":"p1","title":"one","bid_status":"awarded"}])",
         R"([{"id":"p2","title":"two","bid_status":"awarded"}])", projects},
        {"Settings", "/config", R"({"max_daily_bids":"1"})", R"({"max_daily_bids":"2"})", settings},
        {"Workspace", "/projects/p1", R"({"id":"p1","title":"one"})",
         R"({"id":"p1","title":"two"})", workspace},
        listTab("Chat", "/messages", R"({"id":"1","sender":"agent","message_text":"one"})",
                R"({"id":"1","sender":"agent","message_text":"two"})", tab<&Workspace::newChat>),
        listTab("Bids", "/bids", R"({"username":"one"})", R"({"username":"two"})", bids),
        listTab("Development", "/timeline", R"({"event":"one"})", R"({"event":"two"})",
                tab<&Workspace::newDevelopment>),
        listTab("Logs", "/logs", R"({"id":"1","log_type":"info","content":"one"})",
                R"({"id":"1","log_type":"info","content":"two"})", tab<&Workspace::newLogs>),
        listTab("Decisions", "/decisions", R"({"id":"d1","question":"one","status":"pending"})",
                R"({"id":"d1","question":"two","status":"pending"})",
                tab<&Workspace::newDecisions>),
        listTab("Reports", "/reports", R"({"id":"1","report_date":"one"})",
                R"({"id":"1","report_date":"two"})", tab<&Workspace::newReports>)};
    return kinds;
}

std::vector<ScreenKind> reloadingScreenKinds()
{
    return {screenKinds().begin(), screenKinds().begin() + 2};
}

} // namespace trellisport::test
