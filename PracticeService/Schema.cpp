#include "PracticeService/Schema.h"

#include <array>

namespace trellisport::practice {

namespace {

constexpr int schemaVersion = 1;

// Rows are numbered in the order in which things happened; the lists follow that order.
constexpr std::array statements{
    "CREATE TABLE notes (name TEXT PRIMARY KEY, value TEXT NOT NULL) WITHOUT ROWID",
    "CREATE TABLE config (name TEXT PRIMARY KEY, value TEXT NOT NULL) WITHOUT ROWID",
    "CREATE TABLE devices (token TEXT PRIMARY KEY, first_seen TEXT NOT NULL,"
    " last_seen TEXT NOT NULL) WITHOUT ROWID",
    // story, work and stage_since are the agent's own; the rest is what the console sees.
    "CREATE TABLE projects (row INTEGER PRIMARY KEY, id TEXT NOT NULL UNIQUE, ref_number TEXT,"
    " freelancer_project_id INTEGER, title TEXT NOT NULL, description TEXT, project_md TEXT,"
    " delivery_plan TEXT, questionnaire TEXT, owner_answers TEXT, bid_amount REAL,"
    " bid_status TEXT, owner_username TEXT, github_repo_url TEXT, created_at TEXT,"
    " updated_at TEXT, story TEXT NOT NULL, work TEXT NOT NULL, stage_since TEXT NOT NULL)",
    "CREATE INDEX projects_by_status ON projects (bid_status, updated_at)",
    "CREATE INDEX projects_by_change ON projects (updated_at)",
    "CREATE INDEX projects_by_work ON projects (work)",
    "CREATE INDEX projects_by_title ON projects (title)",
    "CREATE TABLE messages (row INTEGER PRIMARY KEY, project INTEGER NOT NULL REFERENCES projects,"
    " id TEXT NOT NULL, sender TEXT NOT NULL, message_text TEXT NOT NULL,"
    " created_at TEXT NOT NULL)",
    "CREATE INDEX messages_by_project ON messages (project)",
    "CREATE TABLE decisions (row INTEGER PRIMARY KEY, project INTEGER NOT NULL REFERENCES projects,"
    " id TEXT NOT NULL UNIQUE, question TEXT NOT NULL, answer TEXT, status TEXT NOT NULL,"
    " timeout_minutes INTEGER, notified_at TEXT, answered_at TEXT)",
    "CREATE INDEX decisions_by_project ON decisions (project)",
    "CREATE INDEX decisions_by_status ON decisions (status)",
    "CREATE TABLE bids (row INTEGER PRIMARY KEY, project INTEGER NOT NULL REFERENCES projects,"
    " bidder_id INTEGER, username TEXT, display_name TEXT, country TEXT, rating REAL,"
    " reviews INTEGER, amount REAL, period INTEGER, description TEXT, is_ours INTEGER,"
    " placed_at TEXT NOT NULL)",
    "CREATE INDEX bids_by_project ON bids (project)",
    "CREATE INDEX bids_of_ours ON bids (is_ours, placed_at)",
    "CREATE TABLE timeline (row INTEGER PRIMARY KEY, project INTEGER NOT NULL REFERENCES projects,"
    " time TEXT, event TEXT NOT NULL, detail TEXT, type TEXT)",
    "CREATE INDEX timeline_by_project ON timeline (project)",
    "CREATE TABLE logs (row INTEGER PRIMARY KEY, project INTEGER NOT NULL REFERENCES projects,"
    " id TEXT NOT NULL, log_type TEXT NOT NULL, content TEXT NOT NULL, created_at TEXT)",
    "CREATE INDEX logs_by_project ON logs (project)",
    "CREATE TABLE reports (row INTEGER PRIMARY KEY, project INTEGER NOT NULL REFERENCES projects,"
    " id TEXT NOT NULL, report_date TEXT, commit_diff_summary TEXT, claude_md_diff TEXT,"
    " artifact_links TEXT, created_at TEXT)",
    "CREATE INDEX reports_by_project ON reports (project, report_date)",
    "CREATE TABLE happenings (row INTEGER PRIMARY KEY, time TEXT NOT NULL, type TEXT NOT NULL,"
    " project_id TEXT NOT NULL, text TEXT NOT NULL)",
};

} // namespace

void ensureSchema(Database &database)
{
    Database::Transaction transaction(database);
    const int version = database.one("PRAGMA user_version").toInt();
    if (version == 0) {
        for (const char *statement : statements)
            database.run(statement);
        database.run("PRAGMA user_version = 1");
    } else if (version != schemaVersion) {
        throw StoreError("the data folder was made by another version of the practice service");
    }
    transaction.commit();
}

} // namespace trellisport::practice
