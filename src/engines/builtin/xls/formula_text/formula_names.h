#pragma once

#include "engines/builtin/xls/records/globals.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace orrery::xls {

/// What the tokens of formulas refer to by number, as text: sheets, names, functions of add-ins.
/// Damaged links have no text. Never changed after it is made.
class FormulaNames {
public:
    /// `globals` must outlive this object.
    explicit FormulaNames(const Globals& globals);

    /// The sheets of an entry of EXTERNSHEET before a cell: "Sheet1!", "'A 1:A 3'!", "[1]Sheet1!",
    /// "#REF!" for deleted sheets.
    std::optional<std::string> SheetPrefix(std::uint16_t link) const;
    /// A name of this workbook as the files write it ("_xlnm.Print_Area", "_xlfn.CONCAT"), by its
    /// number from 1.
    std::optional<std::string> Name(std::uint32_t name) const;
    /// A name that is reached through an entry of EXTERNSHEET: a function of an add-in, a name of
    /// another sheet or workbook ("[1]!Rate").
    std::optional<std::string> LinkedName(std::uint16_t link, std::uint32_t name) const;

private:
    /// A SUPBOOK record with its names. [MS-XLS] 2.4.271
    struct Book {
        enum class Kind { Own, AddIn, SameSheet, Unused, External };
        Kind kind = Kind::Unused;
        std::size_t number = 0; ///< of other workbooks, from 1
        std::vector<std::string> sheets;
        struct Name {
            std::string text;
            std::uint16_t sheet = 0; ///< from 1; 0: the workbook
        };
        std::vector<Name> names;
    };

    void ReadName(const NameEntry& entry);
    void ReadBooks();
    static Book ReadBook(std::string_view data);
    static Book::Name ReadExternName(std::string_view data);
    const Book* BookOf(const SheetLink& link) const;
    std::optional<std::string> SheetName(const Book& book, std::int16_t sheet) const;

    const Globals& globals_;
    std::vector<std::string> names_;
    std::vector<Book> books_;
};

} // namespace orrery::xls
