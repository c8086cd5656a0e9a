#pragma once

#include "engines/builtin/zip/writer.h"
#include "util/file_replace.h"

#include <cstddef>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>

/// Small workbooks for the fuzzers of `.xlsx`, one part of which an input replaces.
namespace orrery::fuzz {

struct Part {
    const char* name;
    const char* text;
};

/// Writes an input that begins like a zip container as it is. Of any other the first byte chooses
/// one of the parts, and the rest becomes its text.
inline void WriteWithPart(const std::filesystem::path& path, std::span<const Part> parts,
                          std::string_view input)
{
    if (input.starts_with("PK")) {
        util::ReplaceFile(path, input);
        return;
    }
    const std::size_t chosen =
        input.empty() ? parts.size() : static_cast<unsigned char>(input.front()) % parts.size();
    zip::Writer writer;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const std::string text(i == chosen ? input.substr(1) : parts[i].text);
        writer.AddEntry(parts[i].name, [text](zip::EntrySink& sink) { sink.Add(text); });
    }
    writer.Write(path);
}

} // namespace orrery::fuzz
