#include "Presentation/CardRows.h"

#include "Presentation/TextPieces.h"

#include <QStringList>

#include <algorithm>
#include <numeric>

namespace trellisport {

namespace {

template <typename Iterator>
std::size_t totalSize(Iterator begin, Iterator end)
{
    return std::accumulate(begin, end, std::size_t{0}, [](std::size_t size, std::string_view text) {
        return size + text.size();
    });
}

} // namespace

CardRows::CardRows(const platform::TextRules &rules, QObject *parent)
    : QAbstractListModel(parent)
    , m_rules(rules)
{
}

int CardRows::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant CardRows::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const Slice shown = slice(index.row());
    switch (role) {
    case First:
        return shown.isFirst;
    case Last:
        return shown.isLast;
    default:
        return value(shown, role);
    }
}

QString CardRows::wholeText(int row, int number) const
{
    if (row < 0 || row >= rowCount() || number < 0) {
        return {};
    }
    const LongTexts texts = longTexts(m_rows[static_cast<std::size_t>(row)].entry);
    const auto place = static_cast<std::size_t>(number);
    return place < texts.size() ? displayText(texts.at(place)) : QString();
}

QString CardRows::cardText(int row) const
{
    if (row < 0 || row >= rowCount()) {
        return {};
    }
    QStringList texts;
    for (const std::string_view text : copiedTexts(m_rows[static_cast<std::size_t>(row)].entry)) {
        if (!text.empty()) {
            texts << displayText(text);
        }
    }
    return texts.join(QLatin1String("\n\n"));
}

int CardRows::cardRow(int row, int distance) const
{
    if (row < 0 || row >= rowCount()) {
        return -1;
    }
    const qint64 entry = qint64{m_rows[static_cast<std::size_t>(row)].entry} + distance;
    const bool exists = entry >= 0 && entry <= qint64{m_rows.back().entry};
    return exists ? static_cast<int>(firstRowOf(static_cast<std::size_t>(entry))) : -1;
}

QHash<int, QByteArray> CardRows::withCommonRoles(QHash<int, QByteArray> roles)
{
    roles.insert(First, "first");
    roles.insert(Last, "last");
    return roles;
}

CardRows::Slice CardRows::slice(int row) const
{
    const auto number = static_cast<std::size_t>(row);
    const Row &shown = m_rows[number];
    const bool isLast = number + 1 == m_rows.size() || m_rows[number + 1].entry != shown.entry;
    std::size_t end = 0;
    if (isLast) {
        const LongTexts texts = longTexts(shown.entry);
        end = totalSize(texts.begin(), texts.end());
    } else {
        end = m_rows[number + 1].begin;
    }
    return {shown.entry, shown.begin, end, shown.begin == 0, isLast};
}

CardRows::Piece CardRows::piece(const Slice &slice, std::size_t number) const
{
    const LongTexts texts = longTexts(slice.entry);
    const std::string_view text = texts.at(number);
    const std::size_t begin =
        totalSize(texts.begin(), texts.begin() + static_cast<std::ptrdiff_t>(number));
    const std::size_t end = begin + text.size();
    // Rows are cut within texts only, so that a text's ends never lie on a cut.
    Piece piece{};
    piece.isShown = begin <= slice.end && end >= slice.begin;
    piece.starts = piece.isShown && begin >= slice.begin;
    piece.ends = piece.isShown && end <= slice.end;
    if (piece.isShown) {
        const std::size_t from = piece.starts ? 0 : slice.begin - begin;
        const std::size_t to = piece.ends ? text.size() : slice.end - begin;
        piece.text = text.substr(from, to - from);
    }
    return piece;
}

QString CardRows::Piece::shown() const
{
    return pieceText(text, !ends);
}

void CardRows::appendRows(std::vector<Row> &rows, std::size_t entry) const
{
    const auto number = static_cast<std::uint32_t>(entry);
    rows.push_back({number, 0});
    std::size_t begin = 0;
    for (const std::string_view text : longTexts(entry)) {
        for (std::size_t cut = firstPieceSize(text, m_rules); cut < text.size();
             cut += firstPieceSize(text.substr(cut), m_rules)) {
            rows.push_back({number, begin + cut});
        }
        begin += text.size();
    }
}

std::vector<CardRows::Row> CardRows::rowsOf(std::size_t begin, std::size_t end) const
{
    std::vector<Row> rows;
    rows.reserve(end - begin);
    for (std::size_t entry = begin; entry < end; ++entry) {
        appendRows(rows, entry);
    }
    return rows;
}

std::size_t CardRows::firstRowOf(std::size_t entry) const
{
    const auto row =
        std::lower_bound(m_rows.begin(), m_rows.end(), entry,
                         [](const Row &a, std::size_t number) { return a.entry < number; });
    return static_cast<std::size_t>(row - m_rows.begin());
}

void CardRows::removeEntries(std::size_t begin, std::size_t end)
{
    const std::size_t first = firstRowOf(begin);
    const std::size_t behind = firstRowOf(end);
    if (first == behind) {
        return;
    }
    beginRemoveRows({}, static_cast<int>(first), static_cast<int>(behind) - 1);
    m_rows.erase(m_rows.begin() + static_cast<std::ptrdiff_t>(first),
                 m_rows.begin() + static_cast<std::ptrdiff_t>(behind));
    endRemoveRows();
}

void CardRows::insertEntries(std::size_t begin, std::size_t end)
{
    const std::vector<Row> added = rowsOf(begin, end);
    if (added.empty()) {
        return;
    }
    const std::size_t first = firstRowOf(begin);
    beginInsertRows({}, static_cast<int>(first), static_cast<int>(first + added.size()) - 1);
    m_rows.insert(m_rows.begin() + static_cast<std::ptrdiff_t>(first), added.begin(), added.end());
    endInsertRows();
}

void CardRows::renumber(const std::vector<KeptRun> &kept)
{
    auto run = kept.begin();
    for (Row &row : m_rows) {
        while (row.entry >= run->was + run->count) {
            ++run;
        }
        row.entry = static_cast<std::uint32_t>(row.entry - run->was + run->is);
    }
}

void CardRows::exchangeEntries(const ListsCompared &lists, const std::function<void()> &exchange)
{
    const std::vector<KeptRun> kept = keptRuns(lists);
    // From the last, so that the places of those before stay what they are.
    std::size_t end = lists.wasCount;
    std::for_each(kept.rbegin(), kept.rend(), [&](const KeptRun &run) {
        removeEntries(run.was + run.count, end);
        end = run.was;
    });
    removeEntries(0, end);
    // What is left shows the same in both lists.
    renumber(kept);
    exchange();
    std::size_t begin = 0;
    for (const KeptRun &run : kept) {
        insertEntries(begin, run.is);
        begin = run.is + run.count;
    }
    insertEntries(begin, lists.isCount);
}

void CardRows::entriesChanged(const std::function<bool(std::size_t)> &isChanged, int role)
{
    for (int row = 0; row < rowCount(); ++row) {
        if (isChanged(m_rows[static_cast<std::size_t>(row)].entry)) {
            Q_EMIT dataChanged(index(row), index(row), {role});
        }
    }
}

} // namespace trellisport
