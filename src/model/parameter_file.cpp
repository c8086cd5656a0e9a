#include "model/parameter_file.h"

#include "model/parameter_text.h"
#include "util/error.h"
#include "util/file_replace.h"
#include "util/paths.h"
#include "util/text.h"

namespace orrery::model {

std::string ParameterFilePath(const std::string& templateFolder, const std::string& templateFile)
{
    return util::WithTrailingSeparator(templateFolder) + util::BaseName(templateFile) + ".ini";
}

void ReadParameterFile(const std::filesystem::path& path, NameTables& names, ParameterSets& sets)
{
    sets.Monthly.Holidays.Clear();
    sets.Yearly.Holidays.Clear();
    const auto bytes = util::ReadTextFile(path);
    if (!bytes)
        return;
    try {
        ApplyParameterText(util::DecodeTextFile(*bytes), names, sets);
    }
    catch (const util::Error&) {
        // A full name table or a rule that overflows ends the reading; everything before it stays
        // applied.
        return;
    }
}

bool WriteParameterFile(const std::filesystem::path& path, const NameTables& names,
                        const ParameterSets& sets)
{
    try {
        const auto old = util::ReadTextFile(path);
        const auto extras = old ? FindExtras(util::DecodeTextFile(*old)) : ParameterExtras();
        util::ReplaceFile(path, util::EncodeTextFile(FormatParameterText(names, sets, extras)));
        return true;
    }
    catch (const util::Error&) {
        return false;
    }
}

} // namespace orrery::model
