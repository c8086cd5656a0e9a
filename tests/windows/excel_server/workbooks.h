#pragma once

#include "excel_server/application.h"

namespace orrery::excel_server {

/// `Workbooks`: the open workbooks, by position from 1 or by file name.
class Workbooks : public DispatchObject {
public:
    static constexpr const char* kKind = "Workbooks";
    Workbooks(Server& server, const void* identity, Session& session);

    /// The workbook that the first argument gives.
    static automation::Variant Item(Session& session, const Arguments& arguments);

private:
    const Members& Table() const override;
    automation::Variant GetItem(const Arguments& arguments);
    automation::Variant GetCount(const Arguments& arguments);
    automation::Variant Open(const Arguments& arguments);

    Session& session_;
};

} // namespace orrery::excel_server
