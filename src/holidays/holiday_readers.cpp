#include "holidays/holiday_readers.h"

#include "holidays/key_line.h"
#include "util/error.h"
#include "util/file_read.h"
#include "util/text.h"

namespace orrery::holidays {

namespace {

void AppendRule(std::string_view line, HolidayList& list)
{
    if (auto rule = ParseHolidayLine(line))
        list.Append(*std::move(rule));
}

void ReadRules(std::string_view text, HolidayList& list)
{
    for (const std::string_view line : util::SplitLines(text)) {
        if (list.IsFull())
            return;
        AppendRule(util::Trim(line), list);
    }
}

void ReadSectionRules(std::string_view text, std::string_view header, HolidayList& list)
{
    bool inSection = false;
    for (const std::string_view whole : util::SplitLines(text)) {
        const std::string_view line = util::Trim(whole);
        if (!inSection) {
            inSection = line == header;
            continue;
        }
        if (line.starts_with('['))
            return;
        const auto entry = ReadKeyLine(line);
        if (!entry || !IsHolidayKey(entry->key))
            continue;
        if (list.IsFull())
            return;
        AppendRule(entry->value, list);
    }
}

/// Runs a reader over a file's text. If the file cannot be opened the list stays empty; an error in
/// a rule ends the reading and keeps the rules before it.
template <typename Reader>
void ReadFileInto(const std::filesystem::path& path, HolidayList& list, Reader read)
{
    list.Clear();
    const auto bytes = util::ReadTextFile(path);
    if (!bytes)
        return;
    try {
        read(util::DecodeTextFile(*bytes));
    }
    catch (const util::Error&) {
        // A number too large or a date in month 0; the list keeps the rules before it.
        return;
    }
}

} // namespace

void ReadHolidayFile(const std::filesystem::path& path, HolidayList& list)
{
    ReadFileInto(path, list, [&](const std::string& text) { ReadRules(text, list); });
}

void ReadTemplateHolidays(CalendarKind calendar, const std::filesystem::path& path,
                          HolidayList& list)
{
    const std::string_view header =
        calendar == CalendarKind::Monthly ? kMonthlySection : kYearlySection;
    ReadFileInto(path, list,
                 [&](const std::string& text) { ReadSectionRules(text, header, list); });
}

} // namespace orrery::holidays
