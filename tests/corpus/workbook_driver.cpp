// Does to a workbook what a plan says, through the built-in engine, so that programs which are
// not ours can judge the result.
//
//     workbook_driver same INPUT OUTPUT          opens and saves
//     workbook_driver edit INPUT OUTPUT PLAN     opens, does the steps of the plan, saves
//
// A plan has one step on each line, its fields separated by tabs:
//
//     sheet NAME                     takes the worksheet of that name
//     rename NAME                    renames the current sheet
//     copy                           copies the current sheet after itself, takes the copy
//     next                           takes the sheet that follows
//     number ROW COLUMN INTEGER      writes a cell
//     text ROW COLUMN TEXT           writes a cell; \n, \t, \v and \\ stand for one character each
//
// A cell that cannot be written, and a sheet of a protected workbook that cannot be renamed or
// copied, is printed on standard output, "LINE<tab>KIND<tab>sentence", and the plan goes on; any
// other failure ends it with one sentence on standard error and exit code 1.

#include "book/error.h"
#include "engines/builtin/application.h"
#include "util/error.h"
#include "util/error_text.h"
#include "util/paths.h"
#include "util/text.h"

#include <charconv>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

using orrery::book::AccessMode;
using orrery::book::CellMember;
using orrery::book::CellValue;
using orrery::book::Workbook;
using orrery::book::Worksheet;
namespace book = orrery::book;

namespace {

template <class Number> Number ReadNumber(const std::string& text)
{
    Number number{};
    const char* end = text.data() + text.size();
    const auto [rest, code] = std::from_chars(text.data(), end, number);
    if (code != std::errc() || rest != end)
        throw std::runtime_error("the plan has no number in \"" + text + "\"");
    return number;
}

std::string Unescape(std::string_view text)
{
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\' || i + 1 == text.size()) {
            plain += text[i];
            continue;
        }
        const char code = text[++i];
        plain += code == 'n' ? '\n' : code == 't' ? '\t' : code == 'v' ? '\v' : code;
    }
    return plain;
}

/// The refusals that belong to a step, and not to the workbook as a file.
const char* RefusalName(const orrery::util::AnyErrorKind& kind)
{
    using enum book::ErrorKind;
    static constexpr std::pair<book::ErrorKind, const char*> kNames[] = {
        {CellLocked, "locked"},
        {PartOfArray, "array"},
        {CellOutsideSheet, "outside"},
        {StructureProtected, "structure"}};
    for (const auto& [refusal, name] : kNames) {
        if (kind == refusal)
            return name;
    }
    return nullptr;
}

class Plan {
public:
    Plan(Workbook& workbook, std::istream& steps) : workbook_(workbook), steps_(steps) {}

    void Run()
    {
        std::string line;
        for (int number = 1; std::getline(steps_, line); ++number) {
            try {
                Step(orrery::util::Split(line, '\t'));
            }
            catch (const orrery::Error& error) {
                const char* refusal = RefusalName(error.Kind());
                if (refusal == nullptr)
                    throw;
                std::cout << number << '\t' << refusal << '\t' << orrery::util::ErrorText(error)
                          << '\n';
            }
        }
    }

private:
    void Step(const std::vector<std::string>& fields)
    {
        const std::string& verb = fields.front();
        if (verb == "sheet")
            Take(workbook_.FindWorksheet(fields.at(1)));
        else if (verb == "next")
            Take(Current().Next());
        else if (verb == "rename")
            Current().SetName(fields.at(1));
        else if (verb == "copy") {
            Current().CopyAfter(Current());
            Take(Current().Next());
        }
        else if (verb == "number")
            Write(fields, ReadNumber<std::int16_t>(fields.at(3)), CellMember::Value);
        else if (verb == "text")
            Write(fields, Unescape(fields.at(3)), CellMember::Default);
        else
            throw std::runtime_error("the plan has an unknown step \"" + verb + "\"");
    }

    void Take(Worksheet* sheet)
    {
        if (sheet == nullptr)
            throw std::runtime_error("the plan takes a sheet that is not there");
        current_ = sheet;
    }

    Worksheet& Current()
    {
        if (current_ == nullptr)
            throw std::runtime_error("the plan takes no sheet before it works on one");
        return *current_;
    }

    void Write(const std::vector<std::string>& fields, const CellValue& value, CellMember member)
    {
        Current().SetCell(ReadNumber<std::int32_t>(fields.at(1)),
                          ReadNumber<std::int32_t>(fields.at(2)), value, member);
    }

    Workbook& workbook_;
    std::istream& steps_;
    Worksheet* current_ = nullptr;
};

int Drive(std::span<char*> arguments)
{
    const std::string_view verb = arguments.size() > 1 ? arguments[1] : "";
    if (!(verb == "same" && arguments.size() == 4) && !(verb == "edit" && arguments.size() == 5)) {
        std::cerr << "usage: workbook_driver same INPUT OUTPUT | edit INPUT OUTPUT PLAN\n";
        return 2;
    }
    const auto application = orrery::builtin::CreateApplication(nullptr);
    application->SetDisplayAlerts(false);
    Workbook& workbook = application->OpenWorkbook(orrery::util::ToPath(arguments[2]), true);
    if (verb == "edit") {
        std::ifstream steps(orrery::util::ToPath(arguments[4]));
        if (!steps)
            throw std::runtime_error("the plan cannot be read");
        Plan(workbook, steps).Run();
    }
    workbook.SaveAs(orrery::util::ToPath(arguments[3]), AccessMode::NoChange);
    application->ReleaseWorkbook(workbook);
    application->Quit();
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    try {
        return Drive({argv, static_cast<std::size_t>(argc)});
    }
    catch (const std::exception& error) {
        std::cerr << orrery::util::ErrorText(error) << '\n';
        return 1;
    }
}
