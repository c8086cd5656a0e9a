#pragma once

#include <string>
#include <vector>

namespace orrery::xls {

struct CorpusStream {
    std::string name; ///< of the file
    std::string bytes;
};

/// The workbook streams of the whole `.xls` workbooks of the corpus, by name; none where it is
/// absent. A stream ends behind its last sheet.
std::vector<CorpusStream> CorpusStreams();

} // namespace orrery::xls
