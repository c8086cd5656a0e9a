#pragma once

#include "engines/builtin/common/text_patch.h"
#include "engines/builtin/vba/dir_stream.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace orrery::vba {

/// The PROJECT stream: lines in the project's code page that name its modules, and say what
/// protects it and where its windows are. [MS-OVBA] 2.3.1
class ProjectText {
public:
    explicit ProjectText(std::string text) : text_(std::move(text)) {}

    /// Adds the module of a document behind its model, and its window, which is closed. Throws
    /// Error(DamagedWorkbook) without a subject if the model is not the module of a document.
    void AddDocument(std::string_view model, std::string_view copy);
    std::string Bytes() const { return patch_.Apply(text_); }

private:
    struct Line {
        std::string_view text;
        std::string_view end; ///< empty for a last line without one
        std::size_t next = 0; ///< where the next one begins
    };
    Line LineAt(std::size_t begin) const;
    void InsertBehind(const Line& line, const std::string& added);

    std::string text_;
    builtin::TextPatch patch_;
};

/// The PROJECTwm stream: the names of the modules in the project's code page and in Unicode.
/// [MS-OVBA] 2.3.3
class ProjectNames {
public:
    /// Throws Error(DamagedWorkbook) without a subject.
    explicit ProjectNames(std::string bytes);

    void Add(const ModuleName& name);
    const std::string& Bytes() const { return bytes_; }

private:
    std::string bytes_;
    std::size_t end_ = 0; ///< of the names
};

} // namespace orrery::vba
