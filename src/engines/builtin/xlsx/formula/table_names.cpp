#include "engines/builtin/xlsx/formula/table_names.h"

#include "engines/common/sheet_names.h"

#include <utility>

namespace orrery::xlsx {

using book::SameName;
using engines::FoldCase;

const std::string* TableChange::FindColumn(std::string_view column) const
{
    if (columns.empty())
        return nullptr;
    const auto found = columns.find(FoldCase(column));
    return found == columns.end() ? nullptr : &found->second;
}

void TableNames::Set(std::string_view templateName, TableChange change)
{
    if (!tables_)
        tables_ = std::make_shared<Tables>();
    else if (tables_.use_count() > 1)
        tables_ = std::make_shared<Tables>(*tables_);
    tables_->insert_or_assign(FoldCase(templateName), std::move(change));
}

TableNames TableNames::Inside(std::string_view templateName) const
{
    TableNames inside = *this;
    inside.own_ = templateName;
    return inside;
}

std::optional<std::string> TableNames::NameOf(std::string_view name) const
{
    const TableChange* table = Find(name);
    if (table == nullptr || SameName(table->name, name))
        return std::nullopt;
    return table->name;
}

const TableChange* TableNames::Find(std::string_view name) const
{
    if (!tables_)
        return nullptr;
    const auto found = tables_->find(FoldCase(name));
    return found == tables_->end() ? nullptr : &found->second;
}

} // namespace orrery::xlsx
