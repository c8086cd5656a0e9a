#include "holidays/files/holiday_readers.h"

#include "holidays/files/rule_reader.h"
#include "holidays/key_line.h"
#include "holidays/language/rule_set.h"
#include "util/error.h"
#include "util/file_read.h"
#include "util/numbers.h"
#include "util/text.h"

#include <string>
#include <string_view>
#include <utility>
#include <variant>

namespace orrery::holidays {

namespace {

/// Whether a line of a holiday file is meant as a rule and not as a comment: it begins with a
/// number and a comma, or its kind is known.
bool IsMeantAsRule(std::string_view line)
{
    const std::size_t comma = line.find(',');
    if (comma == std::string_view::npos)
        return false;
    if (util::ReadNumber(util::Trim(line.substr(0, comma))))
        return true;
    const auto rule = ParseHolidayLine(line);
    const auto* const error = std::get_if<util::Error>(&rule);
    return error == nullptr || (error->Kind() != ErrorKind::RuleWithoutFields &&
                                error->Kind() != ErrorKind::UnknownRuleKind);
}

HolidayFile ReadRules(std::string_view text)
{
    HolidayFile file;
    RuleReader reader(file.list);
    const auto lines = util::SplitLines(text);
    for (std::size_t i = 0; i < lines.size() && !reader.HasEnded(); ++i) {
        const std::string_view line = util::Trim(lines[i]);
        if (IsMeantAsRule(line) || IsExtraLine(line))
            reader.Read(i + 1, line);
    }
    file.rules = reader.TakeRules();
    file.problems = reader.TakeProblems();
    return file;
}

HolidayFile ReadSectionRules(std::string_view text, std::string_view header)
{
    HolidayFile file;
    RuleReader reader(file.list);
    bool inSection = false;
    const auto lines = util::SplitLines(text);
    for (std::size_t i = 0; i < lines.size() && !reader.HasEnded(); ++i) {
        const std::string_view line = util::Trim(lines[i]);
        if (!inSection) {
            inSection = line == header;
            continue;
        }
        if (line.starts_with('['))
            break;
        const auto entry = ReadKeyLine(line);
        if (entry && IsHolidayKey(entry->key))
            reader.Read(i + 1, entry->value);
    }
    file.rules = reader.TakeRules();
    file.problems = reader.TakeProblems();
    return file;
}

/// Runs a reader over a file's text. Nothing is read of a file that cannot be read.
template <typename Reader> HolidayFile ReadFile(const std::filesystem::path& path, Reader read)
{
    const auto bytes = util::ReadTextFile(path);
    return bytes ? read(util::DecodeTextFile(*bytes)) : HolidayFile();
}

std::vector<LineProblem> TakeList(HolidayFile file, HolidayList& list)
{
    list = std::move(file.list);
    return std::move(file.problems);
}

} // namespace

HolidayFile LoadHolidayFile(const std::filesystem::path& path)
{
    return ReadFile(path, [](const std::string& text) { return ReadRules(text); });
}

HolidayFile LoadTemplateHolidays(CalendarKind calendar, const std::filesystem::path& path)
{
    const std::string_view header =
        calendar == CalendarKind::Monthly ? kMonthlySection : kYearlySection;
    return ReadFile(path,
                    [header](const std::string& text) { return ReadSectionRules(text, header); });
}

std::vector<LineProblem> ReadHolidayFile(const std::filesystem::path& path, HolidayList& list)
{
    return TakeList(LoadHolidayFile(path), list);
}

std::vector<LineProblem> ReadTemplateHolidays(CalendarKind calendar,
                                              const std::filesystem::path& path, HolidayList& list)
{
    return TakeList(LoadTemplateHolidays(calendar, path), list);
}

} // namespace orrery::holidays
