#pragma once

#include "book/pdf_printer.h"
#include "book/spreadsheet.h"
#include "util/error.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// A spreadsheet application in memory that follows the rules of a real one and logs every call.
/// Its files have a simple format of their own.
namespace orrery::fake {

/// The calls to all applications of a test, in order, such as
///     DisplayAlerts = false        Open Desk.xlsx read-only     Worksheets(Sheet2)
///     Sheet2.Name = January        January.Copy after January   January.Next
///     January(5,2) = 1 Value       January(1,2) = "January"     SaveAs 2027Desk.xlsx
///     Visible?                     Quit                         Release application
class CallLog {
public:
    /// Makes this call fail with the description from now on.
    void FailAt(const std::string& call, const std::string& description);
    /// Makes the application disappear at this call: it and every later call fail.
    void LoseAt(const std::string& call) { lossAt_ = call; }
    /// Logs the call; throws if it should fail.
    void Record(const std::string& call);
    /// Logs a call to the application, like `Record`, and throws once the application is gone.
    void Call(const std::string& call);

    /// What workbooks lack from now on, when they are saved.
    std::vector<util::Error> losses{};

    const std::vector<std::string>& Calls() const { return calls_; }
    /// The calls that contain the text.
    std::vector<std::string> CallsWith(std::string_view text) const;
    void Clear() { calls_.clear(); }

private:
    std::vector<std::string> calls_;
    std::map<std::string, std::string> failures_;
    std::string lossAt_;
    bool lost_ = false;
};

using Cells = std::map<std::pair<std::int32_t, std::int32_t>, book::CellValue>;

struct SheetContent {
    std::string name;
    Cells cells; ///< by row and column
    friend bool operator==(const SheetContent&, const SheetContent&) = default;
};

using WorkbookContent = std::vector<SheetContent>;

void WriteWorkbookFile(const std::filesystem::path& path, const WorkbookContent& content);
WorkbookContent ReadWorkbookFile(const std::filesystem::path& path);

class Workbook;

class Worksheet : public book::Worksheet {
public:
    static constexpr std::int32_t kRows = 1048576;
    static constexpr std::int32_t kColumns = 16384;

    Worksheet(Workbook& workbook, SheetContent content)
        : workbook_(workbook), content_(std::move(content))
    {
    }
    std::string Name() const override { return content_.name; }
    void SetName(std::string_view name) override;
    void CopyAfter(book::Worksheet& after) override;
    book::Worksheet* Next() override;
    void SetCell(std::int32_t row, std::int32_t column, const book::CellValue& value,
                 book::CellMember member) override;

    const SheetContent& Content() const { return content_; }

private:
    Workbook& workbook_;
    SheetContent content_;
};

class Workbook : public book::Workbook {
public:
    Workbook(CallLog& log, WorkbookContent content);
    book::Worksheet* FindWorksheet(std::string_view name) override;
    void SaveAs(const std::filesystem::path& target, book::AccessMode accessMode) override;
    std::vector<util::Error> Losses() const override { return log_.losses; }

    CallLog& Log() { return log_; }
    WorkbookContent Content() const;
    std::vector<std::string> SheetNames() const;
    const Cells& CellsOf(std::string_view sheet) const;
    /// The sheet after the given one; nullptr after the last.
    Worksheet* After(const book::Worksheet& sheet);
    void InsertAfter(const book::Worksheet& sheet, SheetContent content);
    /// Throws if the name breaks a rule of sheet names; `self` may already have it.
    void CheckName(std::string_view name, const Worksheet& self) const;
    /// The default name of a copy: "Sheet1 (2)", then "Sheet1 (3)".
    std::string NameOfCopy(const std::string& original) const;

private:
    bool IsTaken(std::string_view name, const Worksheet* self) const;

    CallLog& log_;
    std::vector<std::unique_ptr<Worksheet>> sheets_;
};

class Application : public book::Application {
public:
    explicit Application(CallLog& log) : log_(log) {}
    ~Application() override;
    void SetDisplayAlerts(bool on) override;
    void SetVisible(bool on) override;
    bool Visible() const override;
    void SetInteractive(bool on) override;
    void SetScreenUpdating(bool on) override;
    book::Workbook& OpenWorkbook(const std::filesystem::path& path, bool readOnly) override;
    void ReleaseWorkbook(book::Workbook& workbook) override;
    void Quit() override;

private:
    CallLog& log_;
    bool visible_ = false;
    std::vector<std::unique_ptr<Workbook>> workbooks_;
};

/// Writes the names of the printed sheets to the file, one per line. Its calls are
///     Print 2027Desk.xlsx into 2027Desk.pdf      Release PDF printer
class PdfPrinter : public book::PdfPrinter {
public:
    explicit PdfPrinter(CallLog& log) : log_(log) {}
    ~PdfPrinter() override;
    PdfPrinter(const PdfPrinter&) = delete;
    PdfPrinter& operator=(const PdfPrinter&) = delete;
    void Print(const std::filesystem::path& workbook, const std::vector<std::string>& sheets,
               const std::filesystem::path& target) override;

private:
    CallLog& log_;
};

} // namespace orrery::fake
