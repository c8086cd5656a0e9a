#include "xlsx/saved_package.h"

#include "util/paths.h"

#include <gtest/gtest.h>
#include <pugixml.hpp>
#include <zip.h>

#include <algorithm>

namespace orrery::test {
namespace {

std::string RelationshipsName(const std::string& name)
{
    const auto slash = name.rfind('/');
    const auto folder = slash == std::string::npos ? 0 : slash + 1;
    return name.substr(0, folder) + "_rels/" + name.substr(folder) + ".rels";
}

} // namespace

SavedPackage::SavedPackage(const std::filesystem::path& path)
{
    zip_t* archive = zip_open(util::FromPath(path).c_str(), ZIP_RDONLY | ZIP_CHECKCONS, nullptr);
    if (archive == nullptr) {
        ADD_FAILURE() << path << " is no zip container";
        return;
    }
    for (zip_int64_t i = 0; i < zip_get_num_entries(archive, 0); ++i) {
        const auto index = static_cast<zip_uint64_t>(i);
        zip_stat_t stat;
        zip_stat_index(archive, index, 0, &stat);
        std::string bytes(stat.size, '\0');
        zip_file_t* file = zip_fopen_index(archive, index, 0);
        EXPECT_EQ(zip_fread(file, bytes.data(), bytes.size()),
                  static_cast<zip_int64_t>(bytes.size()));
        zip_fclose(file);
        names_.emplace_back(stat.name);
        EXPECT_TRUE(parts_.emplace(stat.name, std::move(bytes)).second) << stat.name << " twice";
    }
    zip_discard(archive);
}

std::vector<std::string> SavedPackage::NamesWith(const std::string& prefix) const
{
    std::vector<std::string> found;
    std::copy_if(names_.begin(), names_.end(), std::back_inserter(found), [&](const auto& name) {
        return name.starts_with(prefix) && name.find("_rels/") == std::string::npos;
    });
    return found;
}

bool SavedPackage::HasType(const std::string& name) const
{
    const auto extension = name.substr(name.rfind('.') + 1);
    return !Values("[Content_Types].xml", ("/Types/Override[@PartName='/" + name + "']").c_str())
                .empty() ||
           !Values("[Content_Types].xml",
                   ("/Types/Default[@Extension='" + extension + "']").c_str())
                .empty();
}

const std::string& SavedPackage::Bytes(const std::string& name) const
{
    static const std::string none;
    const auto found = parts_.find(name);
    if (found != parts_.end())
        return found->second;
    ADD_FAILURE() << "no part " << name;
    return none;
}

std::vector<std::string> SavedPackage::Values(const std::string& name, const char* xpath) const
{
    pugi::xml_document document;
    EXPECT_TRUE(document.load_string(Bytes(name).c_str(), pugi::parse_default)) << name;
    std::vector<std::string> values;
    for (const auto& found : document.select_nodes(xpath))
        values.emplace_back(found.attribute() ? found.attribute().value()
                                              : found.node().text().get());
    return values;
}

std::vector<std::string> SavedPackage::Texts() const
{
    std::vector<std::string> texts;
    if (!Has("xl/sharedStrings.xml"))
        return texts;
    pugi::xml_document document;
    document.load_string(Bytes("xl/sharedStrings.xml").c_str(),
                         pugi::parse_default | pugi::parse_ws_pcdata);
    for (const auto& item : document.child("sst").children("si")) {
        std::string text = item.child("t").text().get();
        for (const auto& run : item.children("r"))
            text += run.child("t").text().get();
        texts.push_back(std::move(text));
    }
    return texts;
}

std::vector<SavedPackage::Cell> SavedPackage::Cells(const std::string& name) const
{
    pugi::xml_document document;
    document.load_string(Bytes(name).c_str());
    std::vector<Cell> cells;
    for (const auto& found : document.select_nodes("//sheetData/row/c[v]")) {
        const auto cell = found.node();
        cells.push_back({cell.attribute("r").value(), cell.attribute("t").value(),
                         cell.child("v").text().get()});
    }
    return cells;
}

std::string SavedPackage::SheetPart(const std::string& sheet) const
{
    const auto ids = Values("xl/workbook.xml", ("//sheet[@name='" + sheet + "']/@r:id").c_str());
    for (const auto& target : Targets("xl/workbook.xml")) {
        if (!ids.empty() && target.id == ids.front())
            return target.target;
    }
    ADD_FAILURE() << "no sheet " << sheet;
    return {};
}

std::vector<SavedPackage::Target> SavedPackage::Targets(const std::string& name) const
{
    std::vector<Target> targets;
    if (!Has(RelationshipsName(name)))
        return targets;
    pugi::xml_document document;
    document.load_string(Bytes(RelationshipsName(name)).c_str());
    for (const auto& node : document.child("Relationships").children("Relationship")) {
        Target target{node.attribute("Id").value(), node.attribute("Type").value(),
                      node.attribute("Target").value(),
                      std::string(node.attribute("TargetMode").value()) == "External"};
        const auto folder = std::filesystem::path("/" + name).parent_path();
        if (!target.external && !target.target.starts_with("#"))
            target.target = (folder / target.target).lexically_normal().generic_string().substr(1);
        targets.push_back(std::move(target));
    }
    return targets;
}

} // namespace orrery::test
