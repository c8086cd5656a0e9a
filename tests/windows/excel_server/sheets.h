#pragma once

#include "excel_server/book.h"
#include "excel_server/dispatch_object.h"

namespace orrery::excel_server {

/// `Sheets`: the worksheets of a workbook, by position from 1 or by name without regard to case.
class Sheets : public DispatchObject {
public:
    static constexpr const char* kKind = "Sheets";
    Sheets(Server& server, const void* identity, Book& book);

    /// The worksheet that the first argument gives.
    static automation::Variant Item(Server& server, Book& book, const Arguments& arguments);

private:
    const Members& Table() const override;
    automation::Variant GetItem(const Arguments& arguments);
    automation::Variant GetCount(const Arguments& arguments);

    Book& book_;
};

} // namespace orrery::excel_server
