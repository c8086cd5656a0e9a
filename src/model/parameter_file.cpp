#include "model/parameter_file.h"

#include "model/parameter_text.h"
#include "util/file_replace.h"
#include "util/paths.h"
#include "util/text.h"

namespace orrery::model {

std::string ParameterFilePath(const std::string& templateFolder, const std::string& templateFile)
{
    return util::WithTrailingSeparator(templateFolder) + util::BaseName(templateFile) + ".ini";
}

ParameterReading ReadParameterFile(const std::filesystem::path& path, NameTables& names,
                                   ParameterSets& sets)
{
    sets.Monthly.Holidays.Clear();
    sets.Yearly.Holidays.Clear();
    sets.Monthly.ShownHolidays = {};
    sets.Yearly.ShownHolidays = {};
    const auto bytes = util::ReadTextFile(path);
    return bytes ? ApplyParameterText(util::DecodeTextFile(*bytes), names, sets)
                 : ParameterReading();
}

void WriteParameterFile(const std::filesystem::path& path, const NameTables& names,
                        const ParameterSets& sets)
{
    NameTables knownNames = names;
    ParameterSets old;
    const auto extras = ReadParameterFile(path, knownNames, old).extras;
    util::ReplaceFile(path, util::EncodeTextFile(FormatParameterText(names, sets, extras)));
}

} // namespace orrery::model
