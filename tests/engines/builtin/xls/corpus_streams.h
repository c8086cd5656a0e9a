#pragma once

#include <string>
#include <vector>

namespace orrery::xls {

struct CorpusStream {
    std::string name; ///< of the file
    std::string bytes;
};

/// The workbook streams of the undamaged `.xls` workbooks of the corpus, by name; none if there is
/// no corpus. A stream ends after its last sheet.
std::vector<CorpusStream> CorpusStreams();

} // namespace orrery::xls
