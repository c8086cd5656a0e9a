#include "engines/builtin/xls/formula/formula_places.h"
#include "engines/builtin/xls/formula_text/formula_text.h"
#include "places/places.h"
#include "xls/corpus_streams.h"

#include <cstdlib>
#include <gtest/gtest.h>

namespace orrery::xls {
namespace {

/// A cell of a shared or array formula, or of a data table: their text is elsewhere.
bool IsElsewhere(std::string_view tokens)
{
    return !tokens.empty() && (tokens[0] == 0x01 || tokens[0] == 0x02);
}

TEST(FormulaTextCorpusTest, EveryFormulaOfACellHasAText)
{
    const auto streams = CorpusStreams();
    ASSERT_TRUE(!streams.empty() || std::getenv("CI") == nullptr)
        << "no workbooks in " << places::CorpusFolder();
    if (streams.empty())
        GTEST_SKIP() << "no workbooks in " << places::CorpusFolder();
    std::size_t count = 0;
    for (const auto& stream : streams) {
        const Globals globals(stream.bytes);
        const FormulaNames names(globals);
        const std::string_view bytes(stream.bytes);
        ForEachFormula(bytes, [&](const FormulaPlace& place) {
            const auto tokens = bytes.substr(place.begin, place.size);
            if (place.record != RecordType::Formula || IsElsewhere(tokens))
                return;
            ++count;
            const auto extra = bytes.substr(place.begin + place.size, 2000);
            EXPECT_TRUE(FormulaText(tokens, extra, {names}))
                << stream.name << " at " << place.begin;
        });
    }
    EXPECT_GT(count, 1000U);
}

} // namespace
} // namespace orrery::xls
