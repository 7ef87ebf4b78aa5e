#pragma once

#include "Platform/TextRules.h"
#include "Presentation/KeptEntries.h"

#include <QAbstractListModel>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace trellisport {

/// The rows of a list of cards, one card for each entry. The card of an entry with long texts is
/// cut into several rows, always within a text (TextPieces.h), so that only what is near the window
/// is ever laid out, however long a text is. Nothing of an entry is kept here but where its rows
/// begin: the texts are made when a row is drawn.
///
/// Roles of every model: "first" and "last", whether the row begins and ends its card. Main thread
/// only.
class CardRows : public QAbstractListModel {
    Q_OBJECT
    QML_ANONYMOUS
public:
    enum Role { First = Qt::UserRole, Last, FirstOwnRole };

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const final;
    /// The whole of a long text of the entry that a row belongs to, by the text's number, 0 the
    /// first; empty where there is none.
    [[nodiscard]] Q_INVOKABLE QString wholeText(int row, int number) const;
    /// All that is to be copied of the card that a row belongs to, an empty line between its texts;
    /// empty where there is none.
    [[nodiscard]] Q_INVOKABLE QString cardText(int row) const;
    /// The row in which the card begins that stands so many cards after the one that a row belongs
    /// to, or before it (negative); -1 where there is none.
    [[nodiscard]] Q_INVOKABLE int cardRow(int row, int distance) const;

protected:
    /// The texts of a card that may be long, in the order in which it shows them; what it lacks is
    /// empty.
    using LongTexts = std::array<std::string_view, 3>;

    /// What one row shows of its card.
    struct Slice {
        std::size_t entry;
        std::size_t begin; ///< a place in the entry's long texts put one behind the other
        std::size_t end;
        bool isFirst;
        bool isLast;
    };
    /// What one row shows of one long text.
    struct Piece {
        bool isShown;
        bool starts; ///< whether it holds the text's beginning
        bool ends;
        std::string_view text;

        [[nodiscard]] QString shown() const;
    };

    /// rules must outlive the model.
    explicit CardRows(const platform::TextRules &rules, QObject *parent);

    [[nodiscard]] virtual LongTexts longTexts(std::size_t entry) const = 0;
    /// What cardText() is made of, where that is not the long texts.
    [[nodiscard]] virtual LongTexts copiedTexts(std::size_t entry) const
    {
        return longTexts(entry);
    }
    [[nodiscard]] virtual QVariant value(const Slice &slice, int role) const = 0;
    /// For a subclass's roleNames(): its own and those of every model.
    [[nodiscard]] static QHash<int, QByteArray> withCommonRoles(QHash<int, QByteArray> roles);

    [[nodiscard]] const platform::TextRules &rules() const { return m_rules; }
    [[nodiscard]] Slice slice(int row) const;
    /// The piece of the entry's long text of this number, 0 the first.
    [[nodiscard]] Piece piece(const Slice &slice, std::size_t number) const;
    /// Exchanges the entries: exchange() makes them the new one of the lists. Views keep the rows
    /// of the entries that stay (KeptEntries.h), and what is typed in them.
    void exchangeEntries(const ListsCompared &lists, const std::function<void()> &exchange);
    /// Tells the views that a role of some entries has changed.
    void entriesChanged(const std::function<bool(std::size_t)> &isChanged, int role);

private:
    struct Row {
        std::uint32_t entry;
        std::size_t begin;
    };

    [[nodiscard]] std::vector<Row> rowsOf(std::size_t begin, std::size_t end) const;
    void appendRows(std::vector<Row> &rows, std::size_t entry) const;
    [[nodiscard]] std::size_t firstRowOf(std::size_t entry) const;
    // Those between two places.
    void removeEntries(std::size_t begin, std::size_t end);
    void insertEntries(std::size_t begin, std::size_t end);
    /// Gives the rows, all of kept entries, the entries' new places.
    void renumber(const std::vector<KeptRun> &kept);

    const platform::TextRules &m_rules;
    std::vector<Row> m_rows;
};

/// What tells a value of a list from most others of it: its identity, or of a text the text itself.
template <typename T>
[[nodiscard]] std::size_t entryKey(const T &entry)
{
    if constexpr (std::is_convertible_v<const T &, std::string_view>) {
        return std::hash<std::string_view>{}(entry);
    } else {
        return entryKey(entry.identity());
    }
}

/// The same for a list of values that compare and have an identity: a list shown anew leaves what
/// is alike where it is.
template <typename T>
class EntryRows : public CardRows {
public:
    using List = std::shared_ptr<const std::vector<T>>;

    void show(List entries)
    {
        const std::vector<T> &was = *m_entries;
        const std::vector<T> &is = *entries;
        exchangeEntries({was.size(), is.size(),
                         [&](std::size_t a, std::size_t b) { return was[a] == is[b]; },
                         [&](std::size_t place) { return entryKey(was[place]); },
                         [&](std::size_t place) { return entryKey(is[place]); }},
                        [&] { m_entries = std::move(entries); });
    }
    void show(std::vector<T> entries)
    {
        show(std::make_shared<const std::vector<T>>(std::move(entries)));
    }
    [[nodiscard]] const std::vector<T> &entries() const { return *m_entries; }

protected:
    using CardRows::CardRows;

    [[nodiscard]] const T &entry(std::size_t number) const { return (*m_entries)[number]; }

private:
    List m_entries = std::make_shared<const std::vector<T>>();
};

} // namespace trellisport
