#pragma once

#include <windows.h>

#include <oleauto.h>

#include <exception>
#include <string>

namespace orrery::excel_server {

/// Excel's code for anything that it cannot do.
inline constexpr HRESULT kExcelError = static_cast<HRESULT>(0x800A03ECUL);

/// A call that ends in DISP_E_EXCEPTION. Excel describes many of its failures and gives only a code
/// for others, such as a missing cell or sheet.
class ExcelFailure : public std::exception {
public:
    explicit ExcelFailure(HRESULT itsCode, std::string text = {})
        : code(itsCode), description(std::move(text))
    {
    }
    HRESULT code;
    std::string description; ///< UTF-8; may be empty
};

/// A call that the dispatch interface itself refuses with this result.
class CallFailure : public std::exception {
public:
    explicit CallFailure(HRESULT itsResult, UINT inFault = 0) : result(itsResult), argument(inFault)
    {
    }
    HRESULT result;
    UINT argument; ///< index in rgvarg of the argument in fault
};

} // namespace orrery::excel_server
