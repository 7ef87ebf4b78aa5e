#include "PracticeService/Database.h"

#include <QSqlError>

#include <atomic>

namespace trellisport::practice {

namespace {

[[noreturn]] void fail(const QSqlError &error)
{
    throw StoreError((error.databaseText().isEmpty() ? error.text() : error.databaseText())
                         .trimmed()
                         .toStdString());
}

} // namespace

Database::Database(const Opening &opening)
{
    static std::atomic<int> count{0};
    m_connection = QStringLiteral("practice-%1").arg(++count);
    m_database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_connection);
    m_database.setDatabaseName(QString::fromStdString(opening.file.string()));
    if (!m_database.open()) {
        const QSqlError error = m_database.lastError();
        m_database = QSqlDatabase();
        QSqlDatabase::removeDatabase(m_connection);
        fail(error);
    }
}

// The connection is open by now, so that the destructor runs when a statement throws.
Database::Database(const std::filesystem::path &file)
    : Database(Opening{file})
{
    // NORMAL: a killed process loses nothing; only a power cut may cost the last moments.
    for (const char *setting : {"PRAGMA journal_mode = WAL", "PRAGMA synchronous = NORMAL",
                                "PRAGMA foreign_keys = ON", "PRAGMA busy_timeout = 2000"})
        run(setting);
}

Database::~Database()
{
    m_prepared.clear();
    m_database.close();
    m_database = QSqlDatabase();
    QSqlDatabase::removeDatabase(m_connection);
}

std::int64_t Database::lastRow()
{
    return one("SELECT last_insert_rowid()").toLongLong();
}

QSqlQuery &Database::prepared(const char *sql)
{
    const auto known = m_prepared.find(sql);
    if (known != m_prepared.end())
        return known->second;
    QSqlQuery query(m_database);
    query.setForwardOnly(true);
    if (!query.prepare(QString::fromUtf8(sql)))
        fail(query.lastError());
    return m_prepared.emplace(sql, std::move(query)).first->second;
}

void Database::execute(QSqlQuery &query)
{
    if (!query.exec())
        fail(query.lastError());
}

Database::Transaction::Transaction(Database &database)
    : m_database(database)
{
    m_database.run("BEGIN IMMEDIATE");
}

Database::Transaction::~Transaction()
{
    if (!m_open)
        return;
    try {
        m_database.run("ROLLBACK");
    } catch (const StoreError &) {
        // SQLite rolls back by itself after the errors that make this fail.
    }
}

void Database::Transaction::commit()
{
    m_database.run("COMMIT");
    m_open = false;
}

} // namespace trellisport::practice
