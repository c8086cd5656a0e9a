#include "app/settings.h"

#include "util/numbers.h"
#include "util/paths.h"
#include "util/text.h"

#include <array>

namespace orrery::app {
namespace {

using util::Profile;

constexpr const char* kEnvironment = "Environment";
constexpr const char* kPdf = "Pdf";
constexpr double kMaxLists = 100;
constexpr std::int16_t kDefaultLists = 5;

constexpr std::array<const char*, 12> kEnglishMonths = {
    "January", "February", "March",     "April",   "May",      "June",
    "July",    "August",   "September", "October", "November", "December"};
constexpr std::array<const char*, 7> kEnglishWeekdays = {
    "Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};

std::string ReadTrimmed(const Profile& profile, const char* key, const char* fallback)
{
    const std::string value = profile.Read(kEnvironment, key, fallback);
    return std::string(util::Trim(value));
}

/// A folder from the settings, or its default inside the program's own folder.
std::string ReadFolder(const Profile& profile, const char* key, const Locations& locations,
                       const char* defaultName)
{
    const std::string configured = ReadTrimmed(profile, key, "");
    return util::WithTrailingSeparator(configured.empty() ? locations.folder + defaultName
                                                          : configured);
}

std::int16_t ReadListCount(const Profile& profile, const char* section)
{
    const auto count = util::ReadNumber(profile.Read(section, "Count", "5"));
    if (!count)
        return kDefaultLists;
    if (*count < 1)
        return 0;
    return util::RoundTo16(*count > kMaxLists ? kMaxLists : *count);
}

template <std::size_t NamesPerList>
void LoadLists(const Profile& profile, const char* section,
               const std::array<const char*, NamesPerList>& english,
               model::NameLists<NamesPerList>& lists)
{
    lists.Clear();
    const std::int16_t count = ReadListCount(profile, section);
    for (std::int16_t i = 0; i < count; ++i) {
        const std::string value = profile.Read(section, std::to_string(i + 1) + "Name", "");
        if (auto names = model::SplitNames<NamesPerList>(value)) {
            lists.Store(i, std::move(*names));
            lists.SetTitle(i, profile.Read(section, std::to_string(i + 1) + "Language", ""));
        }
    }
    if (lists.Count() > 0)
        return;
    typename model::NameLists<NamesPerList>::Names names;
    std::copy(english.begin(), english.end(), names.begin());
    lists.Store(0, std::move(names));
}

/// The override, or the folder from the settings, which is created if it is missing.
std::string ChooseFolder(const std::optional<std::string>& override, const std::string& configured)
{
    if (override)
        return util::WithTrailingSeparator(*override);
    util::EnsureFolder(configured);
    return configured;
}

} // namespace

void LoadNameTables(const Profile& profile, model::NameTables& names)
{
    LoadLists(profile, "MonthName", kEnglishMonths, names.Months);
    LoadLists(profile, "WeekdayName", kEnglishWeekdays, names.Weekdays);
}

bool ShowsTips(const Profile& profile)
{
    return !util::EqualIgnoringCase(ReadTrimmed(profile, "ShowTips", "Y"), "N");
}

Settings LoadSettings(const Locations& locations, const FolderOverrides& overrides)
{
    const Profile profile(util::ToPath(locations.settingsFile));
    Settings settings;
    settings.TemplatePath = ChooseFolder(
        overrides.templateFolder, ReadFolder(profile, "TemplatePath", locations, "template"));
    settings.OutputPath = util::WithTrailingSeparator(
        overrides.outputFolder.value_or(ReadFolder(profile, "OutputPath", locations, "output")));
    settings.HolidayFilePath = ChooseFolder(
        overrides.holidayFolder, ReadFolder(profile, "HolidayFilePath", locations, "holiday"));
    LoadNameTables(profile, settings.names);
    settings.defaults = LoadDefaults(profile, settings.names, settings.HolidayFilePath);
    settings.holidayFileErrors = FindHolidayFileErrors(profile, settings.HolidayFilePath);
    settings.ShowTips = ShowsTips(profile);
    settings.Pdf = util::EqualIgnoringCase(ReadTrimmed(profile, kPdf, "N"), "Y");
    settings.Engine = ReadTrimmed(profile, "Engine", "auto");
    return settings;
}

bool SavePdfSetting(const Locations& locations, bool on)
{
    return Profile(util::ToPath(locations.settingsFile)).Write(kEnvironment, kPdf, on ? "Y" : "N");
}

std::int16_t InitialYear(std::int16_t year, std::int16_t month)
{
    constexpr std::int16_t june = 6;
    return static_cast<std::int16_t>(month > june ? year + 1 : year);
}

} // namespace orrery::app
