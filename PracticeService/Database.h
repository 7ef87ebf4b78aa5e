#pragma once

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QVariant>

#include <concepts>
#include <cstdint>
#include <filesystem>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>

namespace trellisport::practice {

class StoreError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// One SQLite file. Belongs to the thread that opened it, and must be used and closed there.
class Database {
public:
    /// Throws StoreError when the file cannot be opened or is no database.
    explicit Database(const std::filesystem::path &file);
    Database(const Database &) = delete;
    Database &operator=(const Database &) = delete;
    ~Database();

    /// Runs a statement; the values fill its question marks. sql must be a literal: its prepared
    /// form is kept by address.
    template <typename... Values>
    void run(const char *sql, const Values &...values)
    {
        started(sql, values...).finish();
    }

    /// Calls row(query) for each row of the answer.
    template <typename Row, typename... Values>
    void each(const char *sql, const Row &row, const Values &...values)
    {
        QSqlQuery &query = started(sql, values...);
        // An answer that is not read to its end would hold back the write-ahead log.
        const Finisher finisher(query);
        while (query.next())
            row(static_cast<const QSqlQuery &>(query));
    }

    /// The first column of the first row, or an invalid value when there is no row.
    template <typename... Values>
    QVariant one(const char *sql, const Values &...values)
    {
        QSqlQuery &query = started(sql, values...);
        const Finisher finisher(query);
        return query.next() ? query.value(0) : QVariant();
    }

    /// The row number of the last insertion.
    [[nodiscard]] std::int64_t lastRow();

    /// What happens until commit() happens whole or not at all. They do not nest.
    class Transaction {
    public:
        explicit Transaction(Database &database);
        Transaction(const Transaction &) = delete;
        Transaction &operator=(const Transaction &) = delete;
        ~Transaction();
        void commit();

    private:
        Database &m_database;
        bool m_open = true;
    };

private:
    struct Opening {
        const std::filesystem::path &file;
    };
    explicit Database(const Opening &opening);

    class Finisher {
    public:
        explicit Finisher(QSqlQuery &query)
            : m_query(query)
        {
        }
        Finisher(const Finisher &) = delete;
        Finisher &operator=(const Finisher &) = delete;
        ~Finisher() { m_query.finish(); }

    private:
        QSqlQuery &m_query;
    };

    static QVariant bound(std::string_view text)
    {
        // A null string would be bound as NULL.
        return text.empty() ? QStringLiteral("")
                            : QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    }
    static QVariant bound(std::integral auto number) { return QVariant::fromValue<qint64>(number); }
    static QVariant bound(double number) { return number; }
    template <typename Value>
    requires requires(const Value &value)
    {
        value.has_value();
        *value;
    }
    static QVariant bound(const Value &value)
    {
        return value.has_value() ? bound(*value) : QVariant();
    }

    template <typename... Values>
    QSqlQuery &started(const char *sql, const Values &...values)
    {
        QSqlQuery &query = prepared(sql);
        int position = 0;
        (query.bindValue(position++, bound(values)), ...);
        execute(query);
        return query;
    }
    QSqlQuery &prepared(const char *sql);
    static void execute(QSqlQuery &query);

    QString m_connection;
    QSqlDatabase m_database;
    std::map<const char *, QSqlQuery> m_prepared;
};

} // namespace trellisport::practice
