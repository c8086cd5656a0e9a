#include "engines/builtin/vba/project_text.h"

#include "engines/builtin/xls/compound/bytes.h"
#include "util/text.h"
#include "util/unicode.h"

#include <algorithm>
#include <utility>

namespace orrery::vba {
namespace {

constexpr std::string_view kDocument = "Document=";
constexpr std::string_view kWorkspace = "[Workspace]";
constexpr std::string_view kDefaultEnd = "\r\n";

/// Whether a line is `key`, the name without regard to case, and `separator`, and goes on.
bool IsEntry(std::string_view line, std::string_view key, std::string_view name, char separator)
{
    const std::size_t end = key.size() + name.size();
    return line.size() > end && line[end] == separator &&
           util::EqualIgnoringCase(line.substr(0, key.size()), key) &&
           util::EqualIgnoringCase(line.substr(key.size(), name.size()), name);
}

} // namespace

/// A line ends in CR LF or LF CR. [MS-OVBA] 2.1.1.1
ProjectText::Line ProjectText::LineAt(std::size_t begin) const
{
    const std::string_view rest = std::string_view(text_).substr(begin);
    const std::size_t size = std::min(rest.find_first_of("\r\n"), rest.size());
    std::size_t next = size;
    if (next < rest.size())
        ++next;
    if (next < rest.size() && (rest[next] == '\r' || rest[next] == '\n') &&
        rest[next] != rest[next - 1])
        ++next;
    return {rest.substr(0, size), rest.substr(size, next - size), begin + next};
}

void ProjectText::InsertBehind(const Line& line, const std::string& added)
{
    if (line.end.empty())
        patch_.Insert(line.next, std::string(kDefaultEnd) + added);
    else
        patch_.Insert(line.next, added + std::string(line.end));
}

void ProjectText::AddDocument(std::string_view model, std::string_view copy)
{
    bool isListed = false;
    bool isWorkspace = false;
    bool hasWindow = false;
    for (std::size_t at = 0; at < text_.size();) {
        const Line line = LineAt(at);
        at = line.next;
        if (line.text.starts_with('['))
            isWorkspace = util::EqualIgnoringCase(line.text, kWorkspace);
        if (!isListed && IsEntry(line.text, kDocument, model, '/')) {
            InsertBehind(line, std::string(kDocument) + std::string(copy) + "/&H00000000");
            isListed = true;
        }
        else if (isWorkspace && !hasWindow && IsEntry(line.text, {}, model, '=')) {
            InsertBehind(line, std::string(copy) + "=0, 0, 0, 0, C");
            hasWindow = true;
        }
    }
    if (!isListed)
        xls::ThrowDamaged("\"PROJECT\" does not list the module of the sheet");
}

ProjectNames::ProjectNames(std::string bytes) : bytes_(std::move(bytes))
{
    while (xls::ReadU8(bytes_, end_) != 0) {
        end_ = bytes_.find('\0', end_);
        if (end_ == bytes_.npos)
            xls::ThrowTooShort();
        ++end_;
        while (xls::ReadU16(bytes_, end_) != 0)
            end_ += 2;
        end_ += 2;
    }
    if (bytes_.size() - end_ != 2 || xls::ReadU16(bytes_, end_) != 0)
        xls::ThrowDamaged("\"PROJECTwm\" cannot be read");
}

void ProjectNames::Add(const ModuleName& name)
{
    std::string entry = name.bytes + '\0';
    for (const char16_t unit : util::ToUtf16(name.text))
        xls::AppendU16(entry, unit);
    xls::AppendU16(entry, 0);
    bytes_.insert(end_, entry);
    end_ += entry.size();
}

} // namespace orrery::vba
