#include "book/fake_spreadsheet.h"

#include "book/error.h"
#include "engines/common/sheet_names.h"
#include "util/error.h"
#include "util/file_replace.h"
#include "util/text.h"

#include <algorithm>
#include <fstream>
#include <sstream>

namespace orrery::fake {
namespace {

using book::ErrorKind;

constexpr std::size_t kLongestName = 31; // in UTF-16 units

/// Number of UTF-16 units of the character with this lead byte.
std::size_t UnitsOf(char lead)
{
    const auto byte = static_cast<unsigned char>(lead);
    if ((byte & 0xC0U) == 0x80U)
        return 0; // a continuation byte
    return byte >= 0xF0U ? 2 : 1;
}

std::size_t Utf16Length(std::string_view text)
{
    std::size_t length = 0;
    for (const char c : text)
        length += UnitsOf(c);
    return length;
}

std::string CutToUnits(std::string_view text, std::size_t most)
{
    std::size_t length = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        length += UnitsOf(text[i]);
        if (length > most)
            return std::string(text.substr(0, i));
    }
    return std::string(text);
}

bool IsValidName(std::string_view name)
{
    return !name.empty() && Utf16Length(name) <= kLongestName &&
           name.find_first_of(":\\/?*[]") == std::string_view::npos && name.front() != '\'' &&
           name.back() != '\'' && !util::EqualIgnoringCase(name, "History");
}

/// "Sheet1 (2)" without its number.
std::string WithoutNumber(const std::string& name)
{
    const std::size_t open = name.rfind(" (");
    if (open == std::string::npos || open == 0 || !name.ends_with(')'))
        return name;
    const std::string digits = name.substr(open + 2, name.size() - open - 3);
    const bool number = !digits.empty() && std::all_of(digits.begin(), digits.end(),
                                                       [](char c) { return c >= '0' && c <= '9'; });
    return number ? name.substr(0, open) : name;
}

std::string ValueText(const book::CellValue& value)
{
    if (const auto* number = std::get_if<std::int16_t>(&value))
        return std::to_string(*number);
    return '"' + std::get<std::string>(value) + '"';
}

std::string Switch(const char* name, bool on)
{
    return std::string(name) + " = " + (on ? "true" : "false");
}

void WriteCell(std::ostream& out, std::pair<std::int32_t, std::int32_t> place,
               const book::CellValue& value)
{
    const auto* text = std::get_if<std::string>(&value);
    out << (text ? "text " : "number ") << place.first << ' ' << place.second << ' ';
    if (text)
        out << text->size() << ' ' << *text << '\n';
    else
        out << std::get<std::int16_t>(value) << '\n';
}

std::string ReadCounted(std::istream& in)
{
    std::size_t size = 0;
    in >> size;
    in.get();
    std::string text(size, '\0');
    in.read(text.data(), static_cast<std::streamsize>(size));
    return text;
}

} // namespace

void CallLog::FailAt(const std::string& call, const std::string& description)
{
    failures_[call] = description;
}

void CallLog::Record(const std::string& call)
{
    calls_.push_back(call);
    if (const auto failure = failures_.find(call); failure != failures_.end())
        throw Error(ErrorKind::ApplicationFailure, call, failure->second);
}

void CallLog::Call(const std::string& call)
{
    Record(call);
    lost_ = lost_ || call == lossAt_;
    if (lost_)
        throw Error(ErrorKind::ApplicationLost, "Fake", "it has ended");
}

std::vector<std::string> CallLog::CallsWith(std::string_view text) const
{
    std::vector<std::string> found;
    std::copy_if(calls_.begin(), calls_.end(), std::back_inserter(found),
                 [&](const std::string& call) { return call.find(text) != std::string::npos; });
    return found;
}

void WriteWorkbookFile(const std::filesystem::path& path, const WorkbookContent& content)
{
    std::ostringstream out;
    out << "fake workbook\n";
    for (const SheetContent& sheet : content) {
        out << "sheet " << sheet.name.size() << ' ' << sheet.name << '\n';
        for (const auto& [place, value] : sheet.cells)
            WriteCell(out, place, value);
    }
    util::ReplaceFile(path, out.str());
}

WorkbookContent ReadWorkbookFile(const std::filesystem::path& path)
{
    std::ifstream in(path, std::ios::binary);
    std::string line;
    if (!in)
        throw Error(util::ErrorKind::FileNotFound, path.string());
    if (!std::getline(in, line) || line != "fake workbook")
        throw Error(ErrorKind::NotAWorkbook, path.string());
    WorkbookContent content;
    for (std::string word; in >> word;) {
        if (word == "sheet") {
            content.push_back({ReadCounted(in), {}});
            continue;
        }
        std::int32_t row = 0;
        std::int32_t column = 0;
        std::int16_t number = 0;
        in >> row >> column;
        if (word == "text")
            content.back().cells[{row, column}] = ReadCounted(in);
        else if (in >> number)
            content.back().cells[{row, column}] = number;
    }
    return content;
}

void Worksheet::SetName(std::string_view name)
{
    workbook_.Log().Call(content_.name + ".Name = " + std::string(name));
    workbook_.CheckName(name, *this);
    content_.name = name;
}

void Worksheet::CopyAfter(book::Worksheet& after)
{
    workbook_.Log().Call(content_.name + ".Copy after " + after.Name());
    workbook_.InsertAfter(after, {workbook_.NameOfCopy(content_.name), content_.cells});
}

book::Worksheet* Worksheet::Next()
{
    workbook_.Log().Call(content_.name + ".Next");
    return workbook_.After(*this);
}

void Worksheet::SetCell(std::int32_t row, std::int32_t column, const book::CellValue& value,
                        book::CellMember member)
{
    const std::string place = '(' + std::to_string(row) + ',' + std::to_string(column) + ')';
    workbook_.Log().Call(content_.name + place + " = " + ValueText(value) +
                         (member == book::CellMember::Value ? " Value" : ""));
    if (row < 1 || row > kRows || column < 1 || column > kColumns)
        throw Error(ErrorKind::CellOutsideSheet, place);
    content_.cells[{row, column}] = value;
}

Workbook::Workbook(CallLog& log, WorkbookContent content) : log_(log)
{
    for (SheetContent& sheet : content)
        sheets_.push_back(std::make_unique<Worksheet>(*this, std::move(sheet)));
}

book::Worksheet* Workbook::FindWorksheet(std::string_view name)
{
    log_.Call("Worksheets(" + std::string(name) + ')');
    for (const auto& sheet : sheets_) {
        if (book::SameName(sheet->Name(), name))
            return sheet.get();
    }
    return nullptr;
}

void Workbook::SaveAs(const std::filesystem::path& target, book::AccessMode accessMode)
{
    log_.Call("SaveAs " + target.filename().string() +
              (accessMode == book::AccessMode::NoChange ? "" : " with other access"));
    WriteWorkbookFile(target, Content());
}

WorkbookContent Workbook::Content() const
{
    WorkbookContent content;
    for (const auto& sheet : sheets_)
        content.push_back(sheet->Content());
    return content;
}

std::vector<std::string> Workbook::SheetNames() const
{
    std::vector<std::string> names;
    for (const auto& sheet : sheets_)
        names.push_back(sheet->Name());
    return names;
}

const Cells& Workbook::CellsOf(std::string_view sheet) const
{
    const auto found = std::find_if(sheets_.begin(), sheets_.end(),
                                    [&](const auto& one) { return one->Name() == sheet; });
    if (found == sheets_.end())
        throw Error(util::ErrorKind::OutOfRange, std::string(sheet));
    return (*found)->Content().cells;
}

Worksheet* Workbook::After(const book::Worksheet& sheet)
{
    const auto found = std::find_if(sheets_.begin(), sheets_.end(),
                                    [&](const auto& one) { return one.get() == &sheet; });
    return found + 1 == sheets_.end() ? nullptr : (found + 1)->get();
}

void Workbook::InsertAfter(const book::Worksheet& sheet, SheetContent content)
{
    const auto found = std::find_if(sheets_.begin(), sheets_.end(),
                                    [&](const auto& one) { return one.get() == &sheet; });
    sheets_.insert(found + 1, std::make_unique<Worksheet>(*this, std::move(content)));
}

bool Workbook::IsTaken(std::string_view name, const Worksheet* self) const
{
    return std::any_of(sheets_.begin(), sheets_.end(), [&](const auto& sheet) {
        return sheet.get() != self && book::SameName(sheet->Name(), name);
    });
}

void Workbook::CheckName(std::string_view name, const Worksheet& self) const
{
    if (!IsValidName(name))
        throw Error(ErrorKind::InvalidSheetName, std::string(name));
    if (IsTaken(name, &self))
        throw Error(ErrorKind::SheetNameTaken, std::string(name));
}

std::string Workbook::NameOfCopy(const std::string& original) const
{
    const std::string base = WithoutNumber(original);
    for (int number = 2;; ++number) {
        const std::string suffix = " (" + std::to_string(number) + ')';
        std::string name = CutToUnits(base, kLongestName - suffix.size()) + suffix;
        if (!IsTaken(name, nullptr))
            return name;
    }
}

Application::~Application()
{
    log_.Record("Release application");
}

void Application::SetDisplayAlerts(bool on)
{
    log_.Call(Switch("DisplayAlerts", on));
}

void Application::SetVisible(bool on)
{
    log_.Call(Switch("Visible", on));
    visible_ = on;
}

bool Application::Visible() const
{
    log_.Call("Visible?");
    return visible_;
}

void Application::SetInteractive(bool on)
{
    log_.Call(Switch("Interactive", on));
}

void Application::SetScreenUpdating(bool on)
{
    log_.Call(Switch("ScreenUpdating", on));
}

book::Workbook& Application::OpenWorkbook(const std::filesystem::path& path, bool readOnly)
{
    log_.Call("Open " + path.filename().string() + (readOnly ? " read-only" : ""));
    workbooks_.push_back(std::make_unique<Workbook>(log_, ReadWorkbookFile(path)));
    return *workbooks_.back();
}

void Application::ReleaseWorkbook(book::Workbook& workbook)
{
    log_.Record("Release workbook");
    std::erase_if(workbooks_, [&](const auto& open) { return open.get() == &workbook; });
}

void Application::Quit()
{
    log_.Call("Quit");
    workbooks_.clear();
}

PdfPrinter::~PdfPrinter()
{
    log_.Record("Release PDF printer");
}

void PdfPrinter::Print(const std::filesystem::path& workbook,
                       const std::vector<std::string>& sheets, const std::filesystem::path& target)
{
    log_.Call("Print " + workbook.filename().string() + " into " + target.filename().string());
    std::string pages;
    for (const SheetContent& sheet : ReadWorkbookFile(workbook)) {
        if (std::find(sheets.begin(), sheets.end(), sheet.name) != sheets.end())
            pages += sheet.name + '\n';
    }
    std::ofstream(target, std::ios::binary) << pages;
}

} // namespace orrery::fake
