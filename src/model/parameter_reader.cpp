#include "model/parameter_text.h"

#include "holidays/files/rule_reader.h"
#include "holidays/key_line.h"
#include "model/error.h"
#include "model/parameter_table.h"
#include "util/error.h"
#include "util/numbers.h"
#include "util/text.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orrery::model {

namespace {

/// Index of the list with the value's names, which is added if it is new.
template <std::size_t NamesPerList>
std::int16_t SelectList(std::string_view value, NameLists<NamesPerList>& table)
{
    auto names = SplitNames<NamesPerList>(value);
    if (!names)
        return 0;
    const std::int16_t found = table.Find(*names);
    return found >= 0 ? found : table.Add(*std::move(names));
}

/// Sets the parameter that a line names, if the value is valid.
class LineReader {
public:
    LineReader(const holidays::KeyLine& line, NameTables& names) : line_(line), names_(names) {}

    template <typename Parameter, typename Field>
    void operator()(const Parameter& parameter, Field& field)
    {
        if (!util::EqualIgnoringCase(parameter.key, line_.key))
            return;
        isParameter_ = true;
        Read(parameter, field);
    }
    /// Whether one of the parameters has the line's key.
    bool IsParameter() const { return isParameter_; }

private:
    void Read(const FlagParameter& /*flag*/, bool& field) const
    {
        field = util::EqualIgnoringCase(line_.value, "Y");
    }
    void Read(const SheetNameParameter& /*name*/, std::string& field) const { field = line_.value; }
    /// Kept on purpose: only Monday is ever set, a 0 in the file keeps the default.
    void Read(const FirstDayParameter& /*day*/, std::int16_t& field) const
    {
        if (util::EqualIgnoringCase(line_.value, "MONDAY") || util::ReadNumber(line_.value) == 1.0)
            field = 1;
    }
    template <typename Field> void Read(const NumberParameter& range, Field& field) const
    {
        const auto number = util::ReadNumber(line_.value);
        if (number && *number >= range.low && *number <= range.high)
            field = static_cast<Field>(util::RoundTo32(*number));
    }
    void Read(const CellParameter& /*cell*/, CellPosition& field) const
    {
        if (const auto cell = ReadCell(line_.value))
            field = *cell;
    }
    void Read(const WeekdayNamesParameter& /*list*/, std::int16_t& field)
    {
        field = SelectList(line_.value, names_.Weekdays);
    }
    void Read(const MonthNamesParameter& /*list*/, std::int16_t& field)
    {
        field = SelectList(line_.value, names_.Months);
    }

    const holidays::KeyLine& line_;
    NameTables& names_;
    bool isParameter_ = false;
};

enum class Section { None, Monthly, Yearly, Holidays, Other };

Section SectionOf(std::string_view header)
{
    if (header == holidays::kMonthlySection)
        return Section::Monthly;
    if (header == holidays::kHolidaysSection)
        return Section::Holidays;
    return header == holidays::kYearlySection ? Section::Yearly : Section::Other;
}

/// Reads a line of "[Holidays]" whose key begins with the calendar's word; false if it is none.
bool ReadChoice(const holidays::KeyLine& entry, std::string_view calendar,
                holidays::HolidayChoice& choice)
{
    if (!entry.key.starts_with(calendar))
        return false;
    const std::string_view key = std::string_view(entry.key).substr(calendar.size());
    if (key == "REGION")
        choice.region = util::ToUpperAscii(entry.value);
    else if (key == "LANGUAGE")
        choice.language = util::ToLowerAscii(entry.value);
    else if (const auto kinds = holidays::ParseCategories(entry.value); key == "KINDS" && kinds)
        choice.categories = *kinds;
    else
        return false;
    return true;
}

/// Reads the lines of a parameter file into the sets.
class FileReader {
public:
    FileReader(std::string_view text, NameTables& names, ParameterSets& sets)
        : text_(text), lines_(util::SplitLines(text)), names_(names), sets_(sets),
          monthlyRules_(sets.Monthly.Holidays), yearlyRules_(sets.Yearly.Holidays)
    {
    }

    ParameterReading Read();

private:
    std::string_view WholeLine() const;
    void ReadLine(const holidays::KeyLine& entry);
    void ReadShownHolidays(std::string_view line);
    template <typename Set>
    void ReadLine(const holidays::KeyLine& entry, Set& set, holidays::RuleReader& rules,
                  std::vector<std::string>& unreadRules);
    void End();

    std::string_view text_;
    const std::vector<std::string_view> lines_;
    NameTables& names_;
    ParameterSets& sets_;
    holidays::RuleReader monthlyRules_;
    holidays::RuleReader yearlyRules_;
    ParameterReading reading_;
    Section section_ = Section::None;
    std::size_t line_ = 0; // index of the current one
    bool hasEnded_ = false;
};

ParameterReading FileReader::Read()
{
    for (line_ = 0; line_ < lines_.size(); ++line_) {
        const std::string_view line = util::Trim(lines_[line_]);
        const bool isHeader = line.starts_with('[');
        if (isHeader)
            section_ = SectionOf(line);
        if (section_ == Section::Other)
            reading_.extras.sections += WholeLine();
        else if (section_ == Section::Holidays) {
            if (!isHeader)
                ReadShownHolidays(line);
        }
        else if (hasEnded_)
            reading_.extras.unread += WholeLine();
        else if (const auto entry = isHeader ? std::nullopt : holidays::ReadKeyLine(line))
            ReadLine(*entry);
    }
    const auto prepend = [](std::vector<holidays::LineProblem> first, auto& problems) {
        problems.insert(problems.begin(), first.begin(), first.end());
    };
    prepend(monthlyRules_.TakeProblems(), reading_.monthlyProblems);
    prepend(yearlyRules_.TakeProblems(), reading_.yearlyProblems);
    return std::move(reading_);
}

/// The current line with its end.
std::string_view FileReader::WholeLine() const
{
    const char* const begin = lines_[line_].data();
    const char* const end =
        line_ + 1 < lines_.size() ? lines_[line_ + 1].data() : text_.data() + text_.size();
    return {begin, end};
}

void FileReader::ReadLine(const holidays::KeyLine& entry)
{
    try {
        if (section_ == Section::Monthly)
            ReadLine(entry, sets_.Monthly, monthlyRules_, reading_.extras.monthlyRules);
        else if (section_ == Section::Yearly)
            ReadLine(entry, sets_.Yearly, yearlyRules_, reading_.extras.yearlyRules);
    }
    catch (const util::OutOfRangeError&) { // the table of names is full
        auto& problems =
            section_ == Section::Monthly ? reading_.monthlyProblems : reading_.yearlyProblems;
        problems.push_back(
            {line_ + 1, util::Error(ErrorKind::TooManyNameLists, std::string(entry.value))});
        End();
    }
}

template <typename Set>
void FileReader::ReadLine(const holidays::KeyLine& entry, Set& set, holidays::RuleReader& rules,
                          std::vector<std::string>& unreadRules)
{
    LineReader reader(entry, names_);
    VisitParameters(set, reader);
    if (reader.IsParameter() || !holidays::IsHolidayKey(entry.key))
        return;
    const bool isRead = rules.Read(line_ + 1, entry.value);
    if (rules.HasEnded())
        End();
    else if (!isRead)
        unreadRules.emplace_back(lines_[line_]);
}

/// What cannot be read is kept.
void FileReader::ReadShownHolidays(std::string_view line)
{
    const auto entry = holidays::ReadKeyLine(line);
    if (entry && (ReadChoice(*entry, "MONTHLY", sets_.Monthly.ShownHolidays) ||
                  ReadChoice(*entry, "YEARLY", sets_.Yearly.ShownHolidays)))
        return;
    if (!line.empty())
        reading_.extras.shownHolidays.emplace_back(line);
}

/// Ends the reading at the current line.
void FileReader::End()
{
    hasEnded_ = true;
    reading_.extras.unread =
        section_ == Section::Monthly ? holidays::kMonthlySection : holidays::kYearlySection;
    (reading_.extras.unread += "\r\n") += WholeLine();
}

} // namespace

ParameterReading ApplyParameterText(std::string_view text, NameTables& names, ParameterSets& sets)
{
    return FileReader(text, names, sets).Read();
}

} // namespace orrery::model
