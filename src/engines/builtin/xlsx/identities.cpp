#include "engines/builtin/xlsx/identities.h"

#include "book/error.h"
#include "engines/builtin/xlsx/package/part_errors.h"
#include "engines/builtin/xlsx/part_kinds.h"
#include "engines/builtin/xml/reading.h"
#include "engines/common/sheet_names.h"
#include "util/text.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <iterator>
#include <limits>

namespace orrery::xlsx {

using engines::FoldCase;

namespace {

constexpr std::uint32_t kHighestId = std::numeric_limits<std::int32_t>::max();

/// Formulas refer to tables by name alone.
void CheckTableNames(const std::vector<Declaration>& declared)
{
    std::unordered_set<std::string> names;
    for (const Declaration& one : declared) {
        if (one.kind == PartKind::Table && !names.insert(FoldCase(one.name)).second) {
            throw util::Error(book::ErrorKind::DamagedWorkbook, {},
                              "two tables have the name \"" + one.name + "\"");
        }
    }
}

} // namespace

bool IsGuid(std::string_view text)
{
    if (text.size() != kGuidLength || text.front() != '{' || text.back() != '}')
        return false;
    constexpr std::string_view kDigits = "0123456789abcdefABCDEF";
    for (std::size_t at = 1; at + 1 < text.size(); ++at) {
        const bool isDash = at == 9 || at == 14 || at == 19 || at == 24;
        if (isDash ? text[at] != '-' : kDigits.find(text[at]) == kDigits.npos)
            return false;
    }
    return true;
}

std::string OwnId(std::string_view id, std::uint32_t copy)
{
    if (!IsGuid(id))
        return std::string(id) + "_" + std::to_string(copy + 1);
    std::array<std::uint64_t, 2> hash = {0xcbf29ce484222325U + copy, 0x84222325cbf29ce4U ^ copy};
    for (const char c : util::ToUpperAscii(id)) {
        hash[0] = (hash[0] ^ static_cast<unsigned char>(c)) * 0x100000001b3U;
        hash[1] = (hash[1] + static_cast<unsigned char>(c)) * 0x9e3779b97f4a7c15U;
    }
    std::array<char, kGuidLength + 2> text{};
    // Version 4, variant 1: what readers that check expect of a random GUID.
    std::snprintf(text.data(), text.size(), "{%08X-%04X-4%03X-%04X-%012llX}",
                  static_cast<unsigned>(hash[0] >> 32), static_cast<unsigned>(hash[0] & 0xFFFF),
                  static_cast<unsigned>((hash[0] >> 16) & 0xFFF),
                  static_cast<unsigned>(0x8000 | ((hash[1] >> 48) & 0x3FFF)),
                  static_cast<unsigned long long>(hash[1] & 0xFFFFFFFFFFFFU));
    return text.data();
}

Identities::Identities(const Package& package, const std::vector<std::string>& definedNames)
    : package_(package)
{
    for (const auto& name : definedNames)
        taken_.insert(FoldCase(name));
    for (const auto& part : package.PartNames()) {
        // Some readers take "/xl/./tables/table1.xml" for the part without the ".".
        const auto kind = KindOf(package.TypeOf(ResolveTarget("", part)));
        if (kind != PartKind::Table && kind != PartKind::Slicers && kind != PartKind::SlicerCache)
            continue;
        UnlessDamaged([&] {
            for (const Declaration& declared : DeclarationsIn(package, part, kind)) {
                taken_.insert(FoldCase(declared.name));
                if (declared.tableId <= kHighestId) // later ids must be in range, too
                    lastTableId_ = std::max(lastTableId_, declared.tableId);
            }
        });
    }
}

std::string Identities::FreeName(const std::string& name)
{
    return FreeNumber(name + "_", 2);
}

/// "_xlchart.v1.4" for "_xlchart.v1.3": Excel numbers these names.
std::string Identities::FreeChartName(const std::string& name)
{
    return FreeNumber(name.substr(0, name.rfind('.') + 1), 0);
}

/// A free name: the prefix with the first number, from `first` on, that is not taken.
std::string Identities::FreeNumber(const std::string& prefix, unsigned first)
{
    auto& number = numbers_.try_emplace(FoldCase(prefix), first).first->second;
    while (true) {
        auto candidate = prefix + std::to_string(number++);
        if (taken_.insert(FoldCase(candidate)).second)
            return candidate;
    }
}

CopyIdentity Identities::ForCopy(const std::string& sheet,
                                 const std::vector<std::string>& ownedParts,
                                 const SheetIdentities& identities, SheetIds ids)
{
    std::vector<Declaration> declared;
    for (const auto& part : ownedParts) {
        auto found = DeclarationsIn(package_, part, KindOf(package_.TypeOf(part)));
        std::move(found.begin(), found.end(), std::back_inserter(declared));
    }
    CheckTableNames(declared);
    CopyIdentity identity;
    identity.sheet = ids;
    identity.number = ++copies_;
    GiveShapeBlocks(ownedParts, identity);
    if (const auto* link = package_.RelationshipsOf(sheet).FindById(identities.drawing)) {
        const auto drawing = identity.drawings.find(PartKey(ResolveTarget(sheet, link->Target)));
        if (drawing != identity.drawings.end())
            identity.shapes = drawing->second;
    }
    GiveNames(declared, identity);
    std::unordered_set<std::string_view> ranges; // of the sheet; add-ins may use other sheets', too
    for (const auto& binding : identities.bindings)
        ranges.insert(binding.id);
    for (const Declaration& one : declared) {
        if (one.kind == PartKind::AddIn && ranges.contains(one.name))
            identity.bindings.emplace(one.name, OwnId(one.name, identity.number));
    }
    return identity;
}

void Identities::GiveNames(const std::vector<Declaration>& declared, CopyIdentity& identity)
{
    for (const Declaration& one : declared) {
        if (one.kind == PartKind::Table) {
            const auto model = one.name.empty() ? std::string("Table") : one.name;
            identity.tables.emplace(model, FreeName(model));
            identity.tableIds.emplace(model, ++lastTableId_);
            if (one.tableId != 0) // which stands for the sheet itself
                identity.newTableIds.emplace(one.tableId, lastTableId_);
        }
        else if (one.kind == PartKind::Slicers) {
            identity.slicers.emplace(one.name, FreeName(one.name));
        }
        else if (one.kind == PartKind::SlicerCache) {
            identity.names.emplace(one.name, FreeName(one.name));
        }
        else if (one.kind == PartKind::Chart2016 && IsName(one.name) &&
                 !identity.names.contains(one.name)) {
            identity.names.emplace(one.name, FreeChartName(one.name));
        }
    }
}

/// Whether the workbook has a name; a chart whose data has none keeps what it says.
bool Identities::IsName(const std::string& name) const
{
    return taken_.contains(FoldCase(name));
}

void Identities::FindShapeBlocksOfAll()
{
    shapeBlocks_.emplace();
    for (const auto& part : package_.PartNames()) {
        if (KindOf(package_.TypeOf(part)) != PartKind::VmlDrawing)
            continue;
        UnlessDamaged([&] {
            auto blocks = FindShapeBlocks(*package_.Read(part));
            takenShapeBlocks_.insert(blocks.begin(), blocks.end());
            shapeBlocks_->emplace(PartKey(part), std::move(blocks));
        });
    }
}

/// One beyond the last if there is none.
std::uint32_t Identities::FreeShapeBlock()
{
    while (takenShapeBlocks_.contains(nextShapeBlock_))
        ++nextShapeBlock_;
    return nextShapeBlock_ <= kLastShapeBlock ? nextShapeBlock_++ : nextShapeBlock_;
}

void Identities::GiveShapeBlocks(const std::vector<std::string>& ownedParts, CopyIdentity& identity)
{
    for (const auto& part : ownedParts) {
        if (KindOf(package_.TypeOf(part)) != PartKind::VmlDrawing)
            continue;
        if (!shapeBlocks_)
            FindShapeBlocksOfAll();
        const auto found = shapeBlocks_->find(PartKey(part));
        if (found == shapeBlocks_->end())
            continue;
        auto& own = identity.drawings[found->first];
        for (const std::uint32_t block : found->second) {
            if (const std::uint32_t free = FreeShapeBlock(); free <= kLastShapeBlock)
                own.emplace(block, free);
        }
    }
}

} // namespace orrery::xlsx
