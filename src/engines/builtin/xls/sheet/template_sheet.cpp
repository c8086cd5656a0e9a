#include "engines/builtin/xls/sheet/template_sheet.h"

#include "book/error.h"
#include "engines/builtin/xls/compound/bytes.h"
#include "util/error.h"

#include <algorithm>
#include <cstdint>
#include <string>

namespace orrery::xls {

namespace {

constexpr std::size_t kStringIndex = 6; // in LABELSST, [MS-XLS] 2.4.149

/// A record that is too short belongs to a damaged sheet.
void AddString(StringUse& use, const Record& record)
{
    ++use.references;
    if (record.data.size() >= kStringIndex + sizeof(std::uint32_t))
        use.used = std::max(use.used, std::size_t{ReadU32(record.data, kStringIndex)} + 1);
}

StringUse ReadStringUse(std::string_view sheet)
{
    RecordReader reader(sheet);
    StringUse use;
    std::size_t depth = 0; // charts are nested
    while (const auto record = reader.Next()) {
        if (record->type == RecordType::Bof)
            ++depth;
        else if (record->type == RecordType::Eof)
            --depth;
        else if (record->type == RecordType::LabelSst && depth == 1)
            AddString(use, *record);
    }
    return use;
}

} // namespace

TemplateSheet::TemplateSheet(std::string_view stream, std::size_t begin, std::size_t limit,
                             bool isWorksheet)
    : TemplateSheet(stream, begin, limit, isWorksheet, ReadSubstream(stream, begin, limit))
{
}

TemplateSheet::TemplateSheet(std::string_view stream, std::size_t begin, std::size_t limit,
                             bool isWorksheet, const Substream& substream)
    : stream_(stream), place_{begin, substream.isWhole ? substream.end : limit},
      readable_{begin, substream.end}, isWhole_(substream.isWhole), isWorksheet_(isWorksheet),
      places_(Readable())
{
}

const std::shared_ptr<const SheetText>& TemplateSheet::Text()
{
    if (!isWhole_)
        ThrowDamaged("a sheet has no end");
    if (!text_)
        text_ = std::make_shared<SheetText>(std::string(Bytes()), place_.begin);
    return text_;
}

bool TemplateSheet::IsIntact()
{
    if (!isIntact_) {
        try {
            isIntact_ = Text() != nullptr;
        }
        catch (const util::Error& error) {
            if (error.Kind() != book::ErrorKind::DamagedWorkbook)
                throw;
            isIntact_ = false;
        }
    }
    return *isIntact_;
}

const StringUse& TemplateSheet::Strings()
{
    if (!strings_)
        strings_ = ReadStringUse(Readable());
    return *strings_;
}

const FormulaFacts& TemplateSheet::Facts()
{
    if (!facts_)
        facts_ = ReadFacts(Readable());
    return *facts_;
}

const DrawingPlaces& TemplateSheet::Drawings()
{
    if (!drawings_)
        drawings_ = FindDrawings(Readable());
    return *drawings_;
}

const EmbeddedPlaces& TemplateSheet::Embedded()
{
    if (!embedded_)
        embedded_ = FindEmbedded(Readable());
    return *embedded_;
}

const TablePlaces& TemplateSheet::Tables()
{
    if (!tables_)
        tables_ = FindTables(Readable());
    return *tables_;
}

} // namespace orrery::xls
