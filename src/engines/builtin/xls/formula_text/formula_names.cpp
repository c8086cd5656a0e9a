#include "engines/builtin/xls/formula_text/formula_names.h"

#include "engines/builtin/common/sheet_quotes.h"
#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/records/records.h"
#include "engines/builtin/xls/records/unicode_string.h"
#include "util/error.h"
#include "util/text.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace orrery::xls {
namespace {

constexpr std::uint16_t kAddIns = 0x3A01;
constexpr std::uint16_t kBuiltIn = 0x0020;
constexpr std::size_t kNameText = 14;      // offset in NAME
constexpr std::size_t kExternNameText = 6; // offset in EXTERNNAME
constexpr std::size_t kMostSheets = 65535;

// [MS-XLS] 2.5.114
constexpr std::array<std::string_view, 14> kBuiltInNames = {
    "Consolidate_Area", "Auto_Open",       "Auto_Close",   "Extract",        "Database",
    "Criteria",         "Print_Area",      "Print_Titles", "Recorder",       "Data_Form",
    "Auto_Activate",    "Auto_Deactivate", "Sheet_Title",  "_FilterDatabase"};

// Functions that .xlsx files call without the prefix of newer ones.
constexpr std::array<std::string_view, 12> kUnprefixed = {
    "AVERAGEIF",    "AVERAGEIFS",         "COUNTIFS",         "CUBEKPIMEMBER",
    "CUBEMEMBER",   "CUBEMEMBERPROPERTY", "CUBERANKEDMEMBER", "CUBESET",
    "CUBESETCOUNT", "CUBEVALUE",          "IFERROR",          "SUMIFS"};

std::string WithoutNeedlessPrefix(std::string name)
{
    constexpr std::string_view kPrefix = "_xlfn.";
    if (!name.starts_with(kPrefix))
        return name;
    const std::string_view bare = std::string_view(name).substr(kPrefix.size());
    const bool isKnown =
        std::find(kUnprefixed.begin(), kUnprefixed.end(), bare) != kUnprefixed.end();
    return isKnown ? std::string(bare) : name;
}

/// Whether the path of a workbook is that of an add-in whose functions are built into later
/// versions of Excel. Folders end in control characters. [MS-XLS] 2.5.277
bool IsKnownAddIn(std::string_view path)
{
    const auto folder = std::find_if(path.rbegin(), path.rend(), [](char c) {
        return static_cast<unsigned char>(c) < 0x20 || c == '\\' || c == '/' || c == ':';
    });
    const std::string file =
        util::ToUpperAscii(path.substr(static_cast<std::size_t>(path.rend() - folder)));
    return file.starts_with("ATPVBA") || file == "FUNCRES.XLA" || file == "FUNCRES.XLAM";
}

std::string PrefixOf(const std::string& book, const std::string& first, const std::string& last)
{
    const bool isOne = first == last;
    const bool quotes =
        builtin::NeedsApostrophes(first) || (!isOne && builtin::NeedsApostrophes(last));
    const std::string text = book + (isOne ? first : first + ':' + last);
    return (quotes ? builtin::InApostrophes(text) : text) + '!';
}

std::string BookPrefix(std::size_t number)
{
    return number == 0 ? std::string() : '[' + std::to_string(number) + ']';
}

/// A name of another workbook; those of live data ("EURUSD.FX,Last") need apostrophes.
std::string OtherName(const std::string& name)
{
    const bool isPlain = std::all_of(name.begin(), name.end(), [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte >= 0x80 || (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') ||
               (byte >= 'a' && byte <= 'z') || c == '_' || c == '.' || c == '\\' || c == '?';
    });
    return isPlain ? name : builtin::InApostrophes(name);
}

} // namespace

FormulaNames::FormulaNames(const Globals& globals) : globals_(globals)
{
    for (const NameEntry& entry : globals.Names())
        ReadName(entry);
    ReadBooks();
}

void FormulaNames::ReadName(const NameEntry& entry)
{
    RecordReader reader(globals_.Stream(), entry.place.begin);
    const std::string_view data = reader.Next().value_or(Record{}).data;
    std::string text =
        ReadUnicodeStringNoCount(data, kNameText, ReadU8(data, 3)).text; // Globals has read it, too
    if ((ReadU16(data, 0) & kBuiltIn) != 0 && text.size() == 1) {
        const auto code = static_cast<unsigned char>(text[0]);
        text = code < kBuiltInNames.size() ? "_xlnm." + std::string(kBuiltInNames[code])
                                           : std::string();
    }
    names_.push_back(WithoutNeedlessPrefix(std::move(text)));
}

void FormulaNames::ReadBooks()
{
    std::size_t others = 0;
    RecordReader reader(globals_.Stream().substr(0, globals_.End()));
    while (const auto record = reader.Next()) {
        if (record->type == RecordType::SupBook) {
            std::string data(record->data);
            for (auto next = reader.Peek(); next && next->type == RecordType::Continue;
                 next = reader.Peek())
                data += reader.Next()->data;
            books_.push_back(ReadBook(data));
            if (books_.back().kind == Book::Kind::External)
                books_.back().number = ++others;
        }
        else if (record->type == RecordType::ExternName && !books_.empty()) {
            books_.back().names.push_back(ReadExternName(record->data));
        }
    }
}

FormulaNames::Book FormulaNames::ReadBook(std::string_view data)
{
    Book book;
    try {
        const std::size_t count = ReadU16(data, 0);
        const std::uint16_t length = ReadU16(data, 2);
        if (length == kOwnBook || length == kAddIns) {
            book.kind = length == kOwnBook ? Book::Kind::Own : Book::Kind::AddIn;
            return book;
        }
        const auto path = ReadUnicodeStringNoCount(data, 4, length);
        if (length == 1 && (path.text[0] == '\0' || path.text[0] == ' ')) {
            book.kind = path.text[0] == ' ' ? Book::Kind::Unused : Book::Kind::SameSheet;
            return book;
        }
        book.kind = IsKnownAddIn(path.text) ? Book::Kind::AddIn : Book::Kind::External;
        for (std::size_t at = 4 + path.size; book.sheets.size() < std::min(count, kMostSheets);) {
            auto sheet = ReadUnicodeString(data, at);
            at += sheet.size;
            book.sheets.push_back(std::move(sheet.text));
        }
    }
    catch (const util::Error&) { // damaged: the sheets from here on have no names
    }
    return book;
}

FormulaNames::Book::Name FormulaNames::ReadExternName(std::string_view data)
{
    try {
        return {WithoutNeedlessPrefix(ReadShortUnicodeString(data, kExternNameText).text),
                ReadU16(data, 2)};
    }
    catch (const util::Error&) {
        return {};
    }
}

const FormulaNames::Book* FormulaNames::BookOf(const SheetLink& link) const
{
    return link.book < books_.size() ? &books_[link.book] : nullptr;
}

std::optional<std::string> FormulaNames::SheetName(const Book& book, std::int16_t sheet) const
{
    const auto index = static_cast<std::size_t>(sheet);
    if (sheet < 0)
        return std::nullopt;
    if (book.kind == Book::Kind::Own)
        return index < globals_.Sheets().size() ? std::optional(globals_.Sheets()[index].Name)
                                                : std::nullopt;
    return index < book.sheets.size() ? std::optional(book.sheets[index]) : std::nullopt;
}

std::optional<std::string> FormulaNames::SheetPrefix(std::uint16_t link) const
{
    if (link >= globals_.Links().size())
        return std::nullopt;
    const SheetLink& entry = globals_.Links()[link];
    const Book* book = BookOf(entry);
    if (book == nullptr)
        return std::nullopt;
    if (book->kind == Book::Kind::SameSheet)
        return std::string();
    const auto first = SheetName(*book, entry.first);
    const auto last = SheetName(*book, entry.last);
    if (!first || !last)
        return "#REF!";
    return PrefixOf(BookPrefix(book->number), *first, *last);
}

std::optional<std::string> FormulaNames::Name(std::uint32_t name) const
{
    if (name == 0 || name > names_.size() || names_[name - 1].empty())
        return std::nullopt;
    return names_[name - 1];
}

std::optional<std::string> FormulaNames::LinkedName(std::uint16_t link, std::uint32_t name) const
{
    const Book* book = link < globals_.Links().size() ? BookOf(globals_.Links()[link]) : nullptr;
    if (book == nullptr || name == 0)
        return std::nullopt;
    if (book->kind == Book::Kind::Own) {
        auto text = Name(name);
        const std::size_t sheet = text ? globals_.Names()[name - 1].Sheet : 0;
        if (sheet == 0 || sheet > globals_.Sheets().size())
            return text;
        const std::string& sheetName = globals_.Sheets()[sheet - 1].Name;
        return PrefixOf({}, sheetName, sheetName) + *text;
    }
    if (name > book->names.size() || book->names[name - 1].text.empty())
        return std::nullopt;
    const Book::Name& entry = book->names[name - 1];
    if (book->kind != Book::Kind::External)
        return entry.text;
    if (entry.sheet == 0 || entry.sheet > book->sheets.size())
        return BookPrefix(book->number) + '!' + OtherName(entry.text);
    const std::string& sheet = book->sheets[entry.sheet - 1U];
    return PrefixOf(BookPrefix(book->number), sheet, sheet) + entry.text;
}

} // namespace orrery::xls
