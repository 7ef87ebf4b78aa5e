// The store's smaller half: settings, devices and what the status page shows.
#include "PracticeService/Columns.h"
#include "PracticeService/Store.h"

namespace trellisport::practice {

TextMap Store::config()
{
    TextMap config;
    m_database.each("SELECT name, value FROM config",
                    [&](const QSqlQuery &row) { config.emplace(textAt(row, 0), textAt(row, 1)); });
    return config;
}

void Store::replaceConfig(const TextMap &config)
{
    m_database.run("DELETE FROM config");
    for (const auto &[name, value] : config)
        m_database.run("INSERT INTO config (name, value) VALUES (?, ?)", name, value);
}

void Store::addDevice(const std::string &token, Moment now)
{
    m_database.run("INSERT INTO devices (token, first_seen, last_seen) VALUES (?, ?, ?)"
                   " ON CONFLICT (token) DO UPDATE SET last_seen = excluded.last_seen",
                   token, isoText(now), isoText(now));
}

void Store::removeDevice(const std::string &token)
{
    m_database.run("DELETE FROM devices WHERE token = ?", token);
}

std::vector<std::string> Store::devices()
{
    std::vector<std::string> tokens;
    m_database.each("SELECT token FROM devices ORDER BY last_seen DESC, token",
                    [&](const QSqlQuery &row) { tokens.push_back(textAt(row, 0)); });
    return tokens;
}

std::vector<Happening> Store::happenings(int limit)
{
    std::vector<Happening> happenings;
    m_database.each(
        "SELECT time, type, project_id, text FROM happenings ORDER BY row DESC LIMIT ?",
        [&](const QSqlQuery &row) {
            happenings.push_back({textAt(row, 0), textAt(row, 1), textAt(row, 2), textAt(row, 3)});
        },
        limit);
    return happenings;
}

std::vector<OpenQuestion> Store::openQuestions(int limit)
{
    std::vector<OpenQuestion> questions;
    m_database.each(
        "SELECT projects.title, decisions.question, decisions.notified_at FROM decisions"
        " JOIN projects ON projects.row = decisions.project WHERE decisions.status = 'pending'"
        " ORDER BY decisions.row DESC LIMIT ?",
        [&](const QSqlQuery &row) {
            questions.push_back({textAt(row, 0), textAt(row, 1), textAt(row, 2)});
        },
        limit);
    return questions;
}

std::optional<std::string> Store::note(const std::string &name)
{
    const QVariant value = m_database.one("SELECT value FROM notes WHERE name = ?", name);
    return value.isValid() ? std::optional(value.toString().toStdString()) : std::nullopt;
}

void Store::setNote(const std::string &name, const std::string &value)
{
    m_database.run("INSERT INTO notes (name, value) VALUES (?, ?)"
                   " ON CONFLICT (name) DO UPDATE SET value = excluded.value",
                   name, value);
}

} // namespace trellisport::practice
