#pragma once

#include "excel_server/book.h"
#include "excel_server/dispatch_object.h"

namespace orrery::excel_server {

/// `Worksheet`.
class Worksheet : public DispatchObject {
public:
    static constexpr const char* kKind = "Worksheet";
    Worksheet(Server& server, const void* identity, Book& book, book::Worksheet& sheet);

private:
    const Members& Table() const override;
    automation::Variant GetName(const Arguments& arguments);
    automation::Variant PutName(const Arguments& arguments);
    automation::Variant GetIndex(const Arguments& arguments);
    automation::Variant GetNext(const Arguments& arguments);
    automation::Variant GetCells(const Arguments& arguments);
    automation::Variant GetVisible(const Arguments& arguments);
    automation::Variant Select(const Arguments& arguments);
    automation::Variant Export(const Arguments& arguments);
    automation::Variant Copy(const Arguments& arguments);

    Book& book_;
    book::Worksheet& sheet_;
};

} // namespace orrery::excel_server
