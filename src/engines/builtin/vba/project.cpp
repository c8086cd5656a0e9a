#include "engines/builtin/vba/project.h"

#include "engines/builtin/vba/compression.h"
#include "engines/builtin/vba/module_source.h"
#include "engines/builtin/xls/compound/bytes.h"
#include "engines/common/sheet_names.h"
#include "util/sentence.h"
#include "util/text.h"
#include "util/unicode.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace orrery::vba {
namespace {

using engines::FoldCase;
using util::Quoted;
using util::QuotedOr;
using xls::CompoundFile;
using xls::EntryId;
using xls::ThrowDamaged;

/// The limit of the code of a module, and of the list of modules: 65,534 lines of 64 characters.
constexpr std::size_t kMaxSource = std::size_t{4} << 20U;
/// The same for all modules together, and for any stream.
constexpr std::size_t kMaxProject = std::size_t{64} << 20U;
constexpr std::size_t kMaxName = 31; ///< units of a module's name, and of a stream's
constexpr const char* kModules = "VBA";
constexpr std::u16string_view kCachePrefix = u"__SRP_";
/// What remains of the stream of the compiled project: a version that no program has, so that every
/// one compiles the source. [MS-OVBA] 2.3.4.1
constexpr std::string_view kNoCache("\xCC\x61\xFF\xFF\x00\x00\x00", 7);

EntryId FindMember(const CompoundFile& file, EntryId storage, const std::string& name)
{
    const auto member = file.Find(name, storage);
    if (!member)
        ThrowDamaged(Quoted(name) + " is missing");
    return *member;
}

void CheckStream(const CompoundFile& file, EntryId entry, const std::string& name)
{
    if (!file.Entry(entry).IsStream())
        ThrowDamaged(QuotedOr(name, "a module") + " is no stream");
    if (file.Entry(entry).size > kMaxProject)
        ThrowDamaged(QuotedOr(name, "a module") + " is too large");
}

EntryId FindStream(const CompoundFile& file, EntryId storage, const std::string& name)
{
    const EntryId stream = FindMember(file, storage, name);
    CheckStream(file, stream, name);
    return stream;
}

EntryId FindModules(const CompoundFile& file, EntryId storage)
{
    const EntryId modules = FindMember(file, storage, kModules);
    if (!file.Entry(modules).IsStorage())
        ThrowDamaged("they have no modules");
    return modules;
}

bool IsLetterOrDigit(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
}

/// Whether a name has no characters that mean something else where it is written. The second byte
/// of a character in a code page is never less than "0".
bool IsIdentifier(const ModuleName& name)
{
    const auto isOther = [](char c) { return static_cast<unsigned char>(c) >= 0x80; };
    return std::all_of(name.text.begin(), name.text.end(),
                       [&](char c) { return isOther(c) || IsLetterOrDigit(c); }) &&
           std::all_of(name.bytes.begin(), name.bytes.end(),
                       [&](char c) { return isOther(c) || c >= '0'; });
}

/// The digits at the end of a name.
std::string_view NumberOf(std::string_view name)
{
    const std::size_t letter = name.find_last_not_of("0123456789");
    return letter == name.npos ? name : name.substr(letter + 1);
}

/// A name with a number in place of its own, shortened to the longest that is allowed.
ModuleName Numbered(const ModuleName& name, std::size_t number)
{
    const std::string digits = std::to_string(number);
    std::u16string units = util::ToUtf16(name.text);
    std::string bytes = name.bytes;
    if (units.size() + digits.size() > kMaxName) {
        if (units.size() != bytes.size()) // characters of two bytes, which cannot be told apart
            ThrowDamaged("the name of a module is too long to be numbered");
        units.resize(kMaxName - digits.size());
        bytes.resize(units.size());
    }
    return {util::FromUtf16(units) + digits, bytes + digits};
}

} // namespace

Project::Project(const CompoundFile& file, EntryId storage)
    : file_(file), storage_(FindModules(file, storage)),
      cacheStream_(FindStream(file, storage_, "_VBA_PROJECT")),
      dirStream_(FindStream(file, storage_, "dir")),
      textStream_(FindStream(file, storage, "PROJECT")),
      namesStream_(file.Find("PROJECTwm", storage)),
      dir_(Decompress(file.ReadStream(dirStream_), kMaxSource)), text_(file.ReadStream(textStream_))
{
    for (const EntryId member : file.MembersOf(storage_))
        members_.emplace(file.Entry(member).name, member);
    if (namesStream_)
        names_.emplace(file.ReadStream(FindStream(file, storage, "PROJECTwm")));
    ReadModules();
}

/// Their sources are unpacked to see whether that is possible, and forgotten.
void Project::ReadModules()
{
    used_ = {cacheStream_, dirStream_};
    std::size_t size = 0;
    for (const Module& each : dir_.Modules()) {
        const std::size_t number = streams_.size();
        streams_.push_back(StreamOf(each));
        if (!used_.insert(streams_.back()).second)
            ThrowDamaged("two modules are one");
        size += SourceOf(number).size();
        if (size > kMaxProject)
            ThrowDamaged("their code is too large");
        const std::string name = FoldCase(each.name.text);
        if (!byName_.emplace(name, number).second)
            ThrowDamaged("two modules have the same name");
        taken_.insert(name);
    }
}

EntryId Project::StreamOf(const Module& listed)
{
    const auto found = members_.find(util::ToUtf16(listed.stream));
    if (found == members_.end())
        ThrowDamaged(QuotedOr(listed.name.text, "a module") + " is missing");
    CheckStream(file_, found->second, listed.name.text);
    return found->second;
}

std::string Project::SourceOf(std::size_t module) const
{
    const std::string stream = file_.ReadStream(streams_[module]);
    const std::size_t offset = dir_.Modules()[module].offset;
    if (offset > stream.size())
        ThrowDamaged("the code of a module is missing");
    return Decompress(std::string_view(stream).substr(offset), kMaxSource);
}

void Project::Reserve(const std::string& codeName)
{
    taken_.insert(FoldCase(codeName));
}

const std::size_t* Project::FindDocument(const std::string& codeName) const
{
    const auto found = byName_.find(FoldCase(codeName));
    if (found == byName_.end() || !dir_.Modules()[found->second].isDocument)
        return nullptr;
    return &found->second;
}

bool Project::HasCode(const std::string& codeName) const
{
    const std::size_t* const found = FindDocument(codeName);
    return found != nullptr && vba::HasCode(SourceOf(*found));
}

bool Project::IsTaken(const ModuleName& name) const
{
    const auto& others = dir_.OtherNames();
    return taken_.contains(FoldCase(name.text)) || members_.contains(util::ToUtf16(name.text)) ||
           std::any_of(others.begin(), others.end(), [&](const std::string& other) {
               return util::EqualIgnoringCase(other, name.bytes);
           });
}

ModuleName Project::FreeName(const ModuleName& model)
{
    const std::string_view number = NumberOf(model.text);
    const std::size_t digits = number.size();
    if (!IsIdentifier(model) || digits == model.text.size() || NumberOf(model.bytes) != number)
        ThrowDamaged("the name of a module cannot be numbered");
    const ModuleName name{model.text.substr(0, model.text.size() - digits),
                          model.bytes.substr(0, model.bytes.size() - digits)};
    for (std::size_t& next = numbers_.emplace(name.text, std::size_t{1}).first->second;; ++next) {
        ModuleName numbered = Numbered(name, next);
        if (!IsTaken(numbered))
            return numbered;
    }
}

std::string Project::AddCopy(const std::string& codeName)
{
    const std::size_t* const model = FindDocument(codeName);
    assert(model != nullptr);
    const ModuleName& modelName = dir_.Modules()[*model].name;
    const ModuleName name = FreeName(modelName);
    const auto source = RenameModule(SourceOf(*model), modelName.bytes, name.bytes);
    dir_.AddCopy(*model, name);
    text_.AddDocument(modelName.bytes, name.bytes);
    if (names_)
        names_->Add(name);
    copies_.push_back({name.text, Compress(source)});
    taken_.insert(FoldCase(name.text));
    return name.text;
}

std::uint64_t Project::AddedBytes() const
{
    std::uint64_t bytes = 0;
    for (const Copy& copy : copies_)
        bytes += copy.source.size() + xls::kEntrySize;
    return bytes;
}

void Project::WriteTo(xls::CompoundWriter& writer) const
{
    for (std::size_t i = 0; i < streams_.size(); ++i) {
        if (const std::size_t cache = dir_.Modules()[i].offset; cache != 0)
            writer.ReplaceStream(streams_[i], file_.ReadStream(streams_[i]).substr(cache));
    }
    for (const auto& [name, member] : members_) {
        const bool isCache = name.starts_with(kCachePrefix) && !used_.contains(member);
        if (isCache && file_.Entry(member).IsStream())
            writer.RemoveStream(member);
    }
    writer.ReplaceStream(cacheStream_, std::string(kNoCache));
    writer.ReplaceStream(dirStream_, Compress(dir_.Bytes()));
    writer.ReplaceStream(textStream_, text_.Bytes());
    if (names_ && namesStream_)
        writer.ReplaceStream(*namesStream_, names_->Bytes());
    for (const Copy& copy : copies_)
        writer.AddStream(storage_, copy.stream, copy.source);
}

} // namespace orrery::vba
