#pragma once

#include "excel_server/application.h"

namespace orrery::excel_server {

/// `Workbook`.
class Workbook : public DispatchObject {
public:
    static constexpr const char* kKind = "Workbook";
    Workbook(Server& server, const void* identity, Session& session, Book& book);

private:
    const Members& Table() const override;
    automation::Variant GetName(const Arguments& arguments);
    automation::Variant GetReadOnly(const Arguments& arguments);
    automation::Variant GetActiveSheet(const Arguments& arguments);
    automation::Variant GetWorksheets(const Arguments& arguments);
    automation::Variant SaveAs(const Arguments& arguments);
    automation::Variant Close(const Arguments& arguments);

    Session& session_;
    Book& book_;
};

} // namespace orrery::excel_server
