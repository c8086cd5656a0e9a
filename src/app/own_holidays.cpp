#include "app/own_holidays.h"

#include "util/error.h"
#include "util/file_read.h"
#include "util/file_replace.h"
#include "util/paths.h"
#include "util/text.h"

#include <algorithm>
#include <filesystem>

namespace orrery::app {
namespace {

constexpr const char* kOwnFolder = "own";
constexpr const char* kCollectedDays = "My days.txt";

void AddFiles(const std::string& folder, bool isOwn, std::vector<AddableFile>& files)
{
    for (const std::string& file : util::ListFiles(folder))
        files.push_back({util::BaseName(file), folder + file, isOwn});
}

/// The lines of each rule: its own, and those that refine it.
std::vector<std::string> BlocksOf(const holidays::HolidayList& list)
{
    std::vector<std::string> blocks;
    for (const holidays::ListEntry& entry : EntriesOf(list)) {
        const std::string line = LineOf(entry) + "\r\n";
        if (line.starts_with('>') && !blocks.empty())
            blocks.back() += line;
        else
            blocks.push_back(line);
    }
    return blocks;
}

/// The text with the same ends of lines as a block, and one behind its last line.
std::string Normalized(std::string_view text)
{
    std::string lines;
    for (const std::string_view line : util::SplitLines(text))
        (lines += line) += "\r\n";
    return lines;
}

} // namespace

std::string OwnHolidayFolder(const std::string& holidayFolder)
{
    return util::WithTrailingSeparator(holidayFolder + kOwnFolder);
}

std::vector<AddableFile> FindAddableFiles(const std::string& holidayFolder)
{
    std::vector<AddableFile> files;
    AddFiles(OwnHolidayFolder(holidayFolder), true, files);
    AddFiles(holidayFolder, false, files);
    return files;
}

std::string CollectedDaysFile(const std::string& holidayFolder)
{
    return OwnHolidayFolder(holidayFolder) + kCollectedDays;
}

void CollectDays(const std::string& holidayFolder, const holidays::HolidayList& days)
{
    const auto path = util::ToPath(CollectedDaysFile(holidayFolder));
    std::string text;
    if (!util::IsMissing(path)) {
        if (const auto error = util::FindTextReadError(path))
            throw util::Error(*error);
        text = util::DecodeTextFile(util::ReadTextFile(path).value_or(""));
    }
    text = Normalized(text);
    const std::string before = "\r\n" + text;
    std::string added;
    for (const std::string& block : BlocksOf(days)) {
        if (before.find("\r\n" + block) == std::string::npos)
            added += block;
    }
    if (added.empty())
        return;
    util::EnsureFolder(OwnHolidayFolder(holidayFolder));
    util::ReplaceFile(path, util::EncodeTextFile(text + added));
}

} // namespace orrery::app
