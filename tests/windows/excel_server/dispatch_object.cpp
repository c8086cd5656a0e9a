#include "excel_server/dispatch_object.h"

#include "automation/wide_text.h"
#include "excel_server/main_window.h"
#include "util/error.h"
#include "util/error_text.h"
#include "util/text.h"

namespace orrery::excel_server {

using automation::Variant;

namespace {

constexpr DWORD kHangTime = 5 * 60 * 1000; // milliseconds; a test ends the process long before
constexpr WORD kPut = DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF;

std::string AccessText(WORD flags)
{
    std::string text;
    const auto add = [&](WORD flag, const char* word) {
        if ((flags & flag) != 0)
            text += (text.empty() ? "" : "|") + std::string(word);
    };
    add(DISPATCH_PROPERTYGET, "get");
    add(DISPATCH_METHOD, "call");
    add(DISPATCH_PROPERTYPUT, "put");
    add(DISPATCH_PROPERTYPUTREF, "putref");
    return text;
}

BSTR NewText(const std::string& text)
{
    return text.empty() ? nullptr : SysAllocString(automation::Wide(text).c_str());
}

/// As in Excel: a failure with a description names its source, one without is only a code.
void FillException(const ExcelFailure& failure, EXCEPINFO* exception)
{
    if (exception == nullptr)
        return;
    *exception = {};
    exception->scode = failure.code;
    exception->bstrDescription = NewText(failure.description);
    if (!failure.description.empty()) {
        exception->bstrSource = NewText("Microsoft Excel");
        exception->bstrHelpFile = NewText("xlmain11.chm");
    }
}

} // namespace

DispatchObject::DispatchObject(Server& server, const char* kind, const void* identity)
    : server_(server), kind_(kind)
{
    name_ = kind_ + '#' + std::to_string(server_.Add(*this, kind_, identity));
}

DispatchObject::~DispatchObject()
{
    server_.log.Write(name_ + " released");
    server_.Remove(*this);
}

HRESULT DispatchObject::QueryInterface(REFIID iid, void** object)
{
    if (object == nullptr)
        return E_POINTER;
    *object = nullptr;
    if (iid != IID_IUnknown && iid != IID_IDispatch)
        return E_NOINTERFACE;
    *object = static_cast<IDispatch*>(this);
    AddRef();
    return S_OK;
}

ULONG DispatchObject::AddRef()
{
    return ++references_;
}

ULONG DispatchObject::Release()
{
    const ULONG left = --references_;
    if (left == 0)
        delete this;
    return left;
}

HRESULT DispatchObject::GetTypeInfoCount(UINT* count)
{
    *count = 0;
    return S_OK;
}

HRESULT DispatchObject::GetTypeInfo(UINT /*index*/, LCID /*locale*/, ITypeInfo** info)
{
    *info = nullptr;
    return DISP_E_BADINDEX;
}

const Member* DispatchObject::FindMember(DISPID id) const
{
    for (const auto& member : Table()) {
        if (member.id == id)
            return &member;
    }
    return nullptr;
}

const Member* DispatchObject::FindMember(std::string_view name) const
{
    for (const auto& member : Table()) {
        if (util::EqualIgnoringCase(member.name, name))
            return &member;
    }
    return nullptr;
}

HRESULT DispatchObject::GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID /*locale*/,
                                      DISPID* ids)
{
    if (iid != IID_NULL)
        return DISP_E_UNKNOWNINTERFACE;
    if (count == 0)
        return S_OK;
    const std::string name = automation::Narrow(names[0]);
    server_.log.Write(kind_ + " looks up " + name);
    const Member* const member = FindMember(name);
    HRESULT result = member != nullptr ? S_OK : DISP_E_UNKNOWNNAME;
    ids[0] = member != nullptr ? member->id : DISPID_UNKNOWN;
    for (UINT i = 1; i < count; ++i) { // the names of parameters, whose ids are their positions
        ids[i] = DISPID_UNKNOWN;
        for (std::size_t p = 0; member != nullptr && p < member->parameters.size(); ++p) {
            if (util::EqualIgnoringCase(member->parameters[p].name, automation::Narrow(names[i])))
                ids[i] = static_cast<DISPID>(p);
        }
        if (ids[i] == DISPID_UNKNOWN)
            result = DISP_E_UNKNOWNNAME;
    }
    return result;
}

HRESULT DispatchObject::Invoke(DISPID id, REFIID iid, LCID /*locale*/, WORD flags,
                               DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                               UINT* argument)
{
    if (iid != IID_NULL)
        return DISP_E_UNKNOWNINTERFACE;
    if (result != nullptr)
        VariantInit(result);
    const DISPPARAMS given = parameters != nullptr ? *parameters : DISPPARAMS{};
    const Member* const member = FindMember(id);
    const std::string memberName = member != nullptr ? member->name : std::to_string(id);
    const std::string line =
        name_ + '.' + memberName + ' ' + AccessText(flags) + ' ' + Describe(member, given);
    const auto nameOf = [this](IUnknown* object) { return server_.NameOf(object); };
    try {
        ApplyFault(kind_ + '.' + memberName, line);
        Variant answer = Answer(member, flags, given);
        const bool empty = answer.Type() == VT_EMPTY;
        server_.log.Write(empty ? line
                                : line + " -> " + excel_server::Describe(answer.Get(), nameOf));
        if (result != nullptr)
            *result = answer.Detach();
        return S_OK;
    }
    catch (const ExcelFailure& failure) {
        FillException(failure, exception);
        server_.log.Write(line + " -> fails " + Hex(failure.code) + ' ' +
                          Quoted(failure.description));
        return DISP_E_EXCEPTION;
    }
    catch (const CallFailure& failure) {
        if (argument != nullptr)
            *argument = failure.argument;
        server_.log.Write(line + " -> answers " + Hex(failure.result));
        return failure.result;
    }
}

Variant DispatchObject::Answer(const Member* member, WORD flags, const DISPPARAMS& parameters)
{
    if (server_.lifetime.HasQuit())
        throw CallFailure(CO_E_OBJNOTCONNECTED);
    if (member == nullptr)
        throw CallFailure(DISP_E_MEMBERNOTFOUND);
    const bool put = (flags & kPut) != 0;
    Handler handler = put ? member->put : nullptr;
    if (!put && (flags & DISPATCH_PROPERTYGET) != 0)
        handler = member->get;
    if (!put && handler == nullptr && (flags & DISPATCH_METHOD) != 0)
        handler = member->call;
    if (handler == nullptr)
        throw CallFailure(DISP_E_MEMBERNOTFOUND);
    try {
        return handler(*this, Arguments(parameters, member->parameters, put));
    }
    catch (const util::Error& error) {
        throw ExcelFailure(kExcelError, util::ErrorText(error));
    }
}

void DispatchObject::ApplyFault(const std::string& member, const std::string& line)
{
    const Fault fault = server_.faults.AtCall(member);
    switch (fault.kind) {
    case FaultKind::None:
        return;
    case FaultKind::Answer:
        throw CallFailure(fault.result);
    case FaultKind::Fail:
        throw ExcelFailure(kExcelError, fault.description);
    case FaultKind::Die:
        server_.log.Write(line + " -> dies");
        TerminateProcess(GetCurrentProcess(), 1);
        return;
    case FaultKind::Open:
        server_.openForUser(fault.description);
        return;
    case FaultKind::Show:
        ShowMainWindow();
        server_.lifetime.SetVisible(true); // its user sees it
        server_.log.Write("A main window appears");
        return;
    case FaultKind::Hang:
        server_.log.Write(line + " -> hangs");
        Sleep(kHangTime);
        TerminateProcess(GetCurrentProcess(), 1);
        return;
    }
}

std::string DispatchObject::Describe(const Member* member, const DISPPARAMS& parameters) const
{
    const auto nameOf = [this](IUnknown* object) { return server_.NameOf(object); };
    std::string text = "(";
    for (UINT i = parameters.cArgs; i-- > 0;) { // in reverse
        if (text.size() > 1)
            text += ", ";
        if (i < parameters.cNamedArgs && parameters.rgdispidNamedArgs[i] != DISPID_PROPERTYPUT) {
            const auto id = static_cast<std::size_t>(parameters.rgdispidNamedArgs[i]);
            const bool known = member != nullptr && id < member->parameters.size();
            text += (known ? member->parameters[id].name : std::to_string(id)) + ":=";
        }
        text += excel_server::Describe(parameters.rgvarg[i], nameOf);
    }
    return text + ')';
}

} // namespace orrery::excel_server
