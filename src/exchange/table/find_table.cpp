#include "exchange/table/find_table.h"

#include "exchange/error.h"
#include "exchange/event_name.h"
#include "exchange/table/date_words.h"
#include "exchange/table/header_words.h"
#include "exchange/table/row_reader.h"
#include "exchange/table/table_entries.h"
#include "util/error.h"
#include "util/text.h"

#include <algorithm>
#include <map>
#include <unordered_set>

namespace orrery::exchange {
namespace {

using Rows = std::vector<std::vector<std::string>>;

constexpr std::size_t kMostRowsRead = 1'000'000; ///< with empty ones
constexpr std::size_t kRowsForSeparator = 200;
constexpr std::size_t kRowsForColumns = 2000;
constexpr std::size_t kRowsForDates = 100'000;
constexpr std::array<char, 5> kSeparators = {'\t', ';', ',', '|', kNoSeparator};

/// The first rows that are not empty.
Rows ReadRows(const TableText& text, char separator, std::size_t most)
{
    Rows rows;
    RowReader reader(text.Bytes(), separator);
    RawRow row;
    for (std::size_t read = 0; rows.size() < most && read < kMostRowsRead && reader.Next(row);
         ++read) {
        if (row.IsEmpty())
            continue;
        std::vector<std::string>& fields = rows.emplace_back();
        for (const RawField& field : row.fields)
            fields.push_back(TextOf(text, field));
    }
    return rows;
}

bool HasLetters(std::string_view text)
{
    return std::any_of(text.begin(), text.end(), [](char c) {
        return ('a' <= c && c <= 'z') || ('A' <= c && c <= 'Z') ||
               static_cast<unsigned char>(c) >= 0x80;
    });
}

/// What a column has in the rows that were looked at.
struct Column {
    std::size_t dates = 0;
    std::size_t names = 0; ///< texts with letters that are no dates
    std::unordered_set<std::string> different;
    /// How likely it has the names: full, and not the same few words again and again.
    std::size_t Score() const { return names + different.size(); }
};

std::vector<Column> LookAt(const Rows& rows)
{
    std::vector<Column> columns;
    for (const auto& row : rows) {
        columns.resize(std::max(columns.size(), row.size()));
        for (std::size_t i = 0; i < row.size(); ++i) {
            if (IsDate(row[i]))
                ++columns[i].dates;
            else if (HasLetters(row[i])) {
                ++columns[i].names;
                columns[i].different.insert(row[i]);
            }
        }
    }
    return columns;
}

/// How many rows have a date and a name if the separator is that.
std::size_t RowsWithEvent(const TableText& text, char separator)
{
    const Rows rows = ReadRows(text, separator, kRowsForSeparator);
    if (separator == kNoSeparator)
        return static_cast<std::size_t>(
            std::count_if(rows.begin(), rows.end(),
                          [](const auto& row) { return !SplitLine(row[0]).date.empty(); }));
    const std::vector<Column> columns = LookAt(rows);
    std::size_t best = 0;
    for (std::size_t date = 0; date < columns.size(); ++date) {
        for (std::size_t name = 0; name < columns.size(); ++name) {
            if (name != date)
                best = std::max(best, std::min(columns[date].dates, columns[name].names));
        }
    }
    return best;
}

/// Nothing if no separator gives rows with events.
std::optional<char> FindSeparator(const TableText& text)
{
    std::optional<char> found;
    std::size_t most = 0;
    for (const char separator : kSeparators) {
        const std::size_t rows = RowsWithEvent(text, separator);
        if (rows > most)
            found = separator;
        most = std::max(most, rows);
    }
    return found;
}

/// Finds the columns of a table by their content and, where there is one, by its header.
class ColumnFinder {
public:
    ColumnFinder(const Rows& rows, TableLayout& layout)
        : rows_(rows), layout_(layout), columns_(LookAt(rows))
    {
    }

    /// False if there is no column with dates, or none beside it with names.
    bool Run()
    {
        std::size_t most = 0;
        for (const Column& column : columns_)
            most = std::max(most, column.dates);
        if (most == 0 || columns_.size() < 2)
            return false;
        // Dates may be missing here and there, so that a later column has more of them.
        const auto isFull = [&](std::size_t i) { return columns_[i].dates * 2 >= most; };
        layout_.dateColumn = Best([&](std::size_t i) {
            return !isFull(i)                       ? 0U
                   : HeaderIs(HeaderWord::End, i)   ? 1U
                   : HeaderIs(HeaderWord::Start, i) ? 3U
                                                    : 2U;
        });
        layout_.hasHeader = !IsDate(Field(0, layout_.dateColumn));
        layout_.nameColumn = Best([&](std::size_t i) -> std::size_t {
            if (i == layout_.dateColumn || isFull(i))
                return 0;
            const std::size_t score = columns_[i].Score();
            return score > 0 && layout_.hasHeader && HeaderIs(HeaderWord::Name, i)
                       ? score + 3 * rows_.size()
                       : score;
        });
        if (layout_.nameColumn == layout_.dateColumn)
            return false;
        for (std::size_t i = 0; i < columns_.size() && layout_.hasHeader; ++i) {
            if (i != layout_.dateColumn && columns_[i].dates > 0 && HeaderIs(HeaderWord::End, i) &&
                !layout_.endColumn)
                layout_.endColumn = i;
        }
        return columns_[layout_.nameColumn].names > 0;
    }

    std::vector<std::string> Names() const
    {
        std::vector<std::string> names;
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            const std::string header = layout_.hasHeader ? CleanName(Field(0, i)) : "";
            names.push_back(header.empty() ? "Column " + std::to_string(i + 1) : header);
        }
        return names;
    }

private:
    std::string_view Field(std::size_t row, std::size_t column) const
    {
        return column < rows_[row].size() ? std::string_view(rows_[row][column]) : "";
    }
    bool HeaderIs(HeaderWord word, std::size_t column) const
    {
        return IsHeader(word, Field(0, column));
    }
    /// The first column with the highest score; the date column if all have none.
    template <typename Score> std::size_t Best(Score score) const
    {
        std::size_t best = layout_.dateColumn;
        std::size_t most = 0;
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            const std::size_t value = score(i);
            if (value > most)
                best = i;
            most = std::max(most, value);
        }
        return best;
    }

    const Rows& rows_;
    TableLayout& layout_;
    std::vector<Column> columns_;
};

/// Finds the order of the dates and the language of their months from all rows.
class DateStatistics {
public:
    void Add(const DateParts& parts)
    {
        if (!parts.month.empty()) {
            for (const MonthWord& word : MonthsOf(parts.month))
                ++languages_[word.language];
            return;
        }
        std::array<std::optional<holidays::Date>, kDateOrders.size()> dates;
        for (const DateOrder order : OrdersOf(parts)) {
            const auto index = static_cast<std::size_t>(order);
            ++orders_.at(index);
            dates.at(index) = DateOf(parts, {order, kEnglishWords});
        }
        for (std::size_t one = 0; one < dates.size(); ++one) {
            for (std::size_t other = 0; other < dates.size(); ++other)
                differ_.at(one).at(other) |= dates.at(one) != dates.at(other);
        }
    }

    /// Those that fit most rows; of those that give the same dates only the first.
    std::vector<DateOrder> Orders() const
    {
        std::vector<DateOrder> found;
        const std::size_t most = *std::max_element(orders_.begin(), orders_.end());
        for (const DateOrder order : kDateOrders) {
            const auto index = static_cast<std::size_t>(order);
            const bool isNew = std::all_of(found.begin(), found.end(), [&](DateOrder known) {
                return differ_.at(index).at(static_cast<std::size_t>(known));
            });
            if (most > 0 && orders_.at(index) == most && isNew)
                found.push_back(order);
        }
        return found;
    }

    /// The language that knows most months; English where it is one of several.
    std::uint16_t Language() const
    {
        std::uint16_t found = kEnglishWords;
        std::size_t most = languages_.contains(found) ? languages_.at(found) : 0;
        for (const auto& [language, count] : languages_) {
            if (count > most)
                found = language;
            most = std::max(most, count);
        }
        return found;
    }

private:
    std::array<std::size_t, kDateOrders.size()> orders_{};
    std::array<std::array<bool, kDateOrders.size()>, kDateOrders.size()> differ_{};
    std::map<std::uint16_t, std::size_t> languages_;
};

void FindDateReading(const TableText& text, FoundTable& found)
{
    DateStatistics statistics;
    EntryReader reader(text, found.layout);
    TableEntry entry;
    for (std::size_t row = 0; row < kRowsForDates && reader.Next(entry); ++row) {
        for (const std::string& date : {entry.date, entry.end}) {
            if (const auto parts = SplitDate(date))
                statistics.Add(*parts);
        }
    }
    found.orders = statistics.Orders();
    if (!found.orders.empty())
        found.layout.dates.order = found.orders.front();
    found.layout.dates.language = statistics.Language();
}

} // namespace

FoundTable FindTable(const TableText& text, const std::string& name)
{
    FoundTable found;
    const auto separator = FindSeparator(text);
    if (!separator)
        throw Error(ErrorKind::NoDates, name);
    found.layout.separator = *separator;
    if (*separator != kNoSeparator) {
        const Rows rows = ReadRows(text, *separator, kRowsForColumns);
        ColumnFinder finder(rows, found.layout);
        if (!finder.Run())
            throw Error(ErrorKind::NoDates, name);
        found.columns = finder.Names();
        for (std::size_t i = 0; i < found.columns.size(); ++i) {
            if (i != found.layout.dateColumn && i != found.layout.nameColumn &&
                i != found.layout.endColumn)
                found.ignored.push_back(found.columns[i]);
        }
    }
    FindDateReading(text, found);
    return found;
}

} // namespace orrery::exchange
