#include "engines/builtin/xls/look/shared_texts.h"

#include "book/error.h"
#include "util/error.h"
#include "util/unicode.h"

namespace orrery::xls {

FormattedText FormatText(std::u16string_view text, const std::vector<FormatRun>& runs,
                         const CellFormats& formats)
{
    FormattedText formatted;
    std::size_t done = 0; // units
    for (const FormatRun& run : runs) {
        if (run.begin >= text.size() || run.begin < done)
            continue;
        formatted.text += util::FromUtf16(text.substr(done, run.begin - done));
        done = run.begin;
        if (!formatted.runs.empty() && formatted.runs.back().begin == formatted.text.size())
            formatted.runs.pop_back(); // an empty run
        formatted.runs.push_back({formatted.text.size(), formats.Font(run.font)});
    }
    formatted.text += util::FromUtf16(text.substr(done));
    return formatted;
}

SharedTexts::SharedTexts(std::string_view records, const CellFormats& formats)
{
    if (records.empty())
        return;
    try {
        SharedStringReader reader(records);
        SharedString string;
        while (reader.Next(string))
            texts_.push_back(FormatText(string.text, string.runs, formats));
    }
    catch (const util::Error& error) {
        if (!(error.Kind() == book::ErrorKind::DamagedWorkbook))
            throw;
        // those that could be read stay
    }
}

} // namespace orrery::xls
