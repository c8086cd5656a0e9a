#pragma once

#include "engines/excel/com.h"
#include "engines/excel/connection.h"

#include <functional>
#include <initializer_list>
#include <map>
#include <string>
#include <string_view>

namespace orrery::excel {

/// An object's default member, in place of a member's name.
inline constexpr std::string_view kDefaultMember = {};

/// A kind of object, such as "Worksheet". All objects of a kind share the ids of its members, which
/// are looked up once.
class ObjectKind {
public:
    /// The connection outlives it.
    ObjectKind(std::string name, Connection& connection)
        : name_(std::move(name)), connection_(connection)
    {
    }
    ObjectKind(const ObjectKind&) = delete;
    ObjectKind& operator=(const ObjectKind&) = delete;

    /// "Worksheet.Copy", for errors.
    std::string CallName(std::string_view member) const;
    /// Asks the object unless another of its kind was asked before. Throws as `Connection::Make`.
    DISPID IdOf(IDispatch& object, std::string_view member);
    Connection& Calls() const { return connection_; }

private:
    std::string name_;
    Connection& connection_;
    std::map<std::string, DISPID, std::less<>> ids_;
};

/// An object of the application; its members are called by name. Every call throws as
/// `Connection::Make`.
class Object {
public:
    /// In the order of the member's declaration; omitted ones at the end are not passed.
    using Arguments = std::initializer_list<Variant>;

    /// The kind outlives it.
    Object(Pointer<IDispatch> object, ObjectKind& kind) : object_(std::move(object)), kind_(kind) {}

    Variant Get(std::string_view property, Arguments arguments = {}) const;
    void Put(std::string_view property, const Variant& value) const;
    Variant Call(std::string_view method, Arguments arguments = {}) const;

    IDispatch& Interface() const { return *object_.Get(); }

private:
    Pointer<IDispatch> object_;
    ObjectKind& kind_;
};

/// The object that a call returned. Throws CallFailure if it returned none.
Object ObjectFrom(Variant result, ObjectKind& kind);

/// The kinds of objects of one running instance.
struct ObjectModel {
    /// The clock outlives it.
    explicit ObjectModel(Clock& clock) : connection(clock) {}

    Connection connection;
    ObjectKind application{"Application", connection};
    ObjectKind workbooks{"Workbooks", connection};
    ObjectKind workbook{"Workbook", connection};
    ObjectKind worksheets{"Worksheets", connection};
    ObjectKind worksheet{"Worksheet", connection};
    ObjectKind range{"Range", connection};
};

} // namespace orrery::excel
