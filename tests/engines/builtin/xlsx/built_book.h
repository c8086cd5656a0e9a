#pragma once

#include "util/scratch_folder.h"
#include "zip/built_zip.h"

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orrery::test {

/// A small workbook of one sheet, "Model", whose parts can be replaced and added, valid or not.
class BuiltBook {
public:
    BuiltBook()
    {
        parts_ = {
            {"[Content_Types].xml", ""},
            {"_rels/.rels", Links({{"officeDocument", "xl/workbook.xml"}})},
            {"xl/workbook.xml", Workbook("<sheets>" + Sheet("Model", "1", "rId1") + "</sheets>")},
            {"xl/_rels/workbook.xml.rels", Links({{"worksheet", "worksheets/sheet1.xml"}})},
            {"xl/worksheets/sheet1.xml", Worksheet("<sheetData/>")},
        };
        types_ = {{"/xl/workbook.xml", "sheet.main"}, {"/xl/worksheets/sheet1.xml", "worksheet"}};
    }

    /// Adds or replaces a part; `type` is the last word of its content type ("table"), empty if the
    /// part already has one or needs none.
    BuiltBook& Put(const std::string& name, std::string content, const std::string& type = {})
    {
        if (!type.empty())
            types_["/" + name] = type;
        for (ZipPart& part : parts_) {
            if (part.name == name) {
                part.content = std::move(content);
                return *this;
            }
        }
        parts_.push_back({name, std::move(content)});
        return *this;
    }
    ZipPart& Part(const std::string& name)
    {
        for (ZipPart& part : parts_) {
            if (part.name == name)
                return part;
        }
        return parts_.emplace_back(ZipPart{name});
    }
    BuiltBook& Type(const std::string& part, const std::string& type)
    {
        types_[part] = type;
        return *this;
    }

    /// Spells all namespaces and relationships as a strict workbook does.
    BuiltBook& MakeStrict()
    {
        for (ZipPart& part : parts_) {
            ReplaceAll(part.content, kMain, "http://purl.oclc.org/ooxml/spreadsheetml/main");
            ReplaceAll(part.content, kRelations,
                       "http://purl.oclc.org/ooxml/officeDocument/relationships");
            ReplaceAll(part.content, "/extended-properties\"", "/extendedProperties\"");
        }
        return *this;
    }

    std::string Bytes()
    {
        std::string types =
            "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\">"
            "<Default Extension=\"rels\" "
            "ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>"
            "<Default Extension=\"xml\" ContentType=\"application/xml\"/>"
            "<Default Extension=\"bin\" ContentType=\"application/x-settings\"/>"
            "<Default Extension=\"vml\" "
            "ContentType=\"application/vnd.openxmlformats-officedocument.vmlDrawing\"/>";
        for (const auto& [name, type] : types_) {
            types += "<Override PartName=\"" + name +
                     "\" ContentType=\"application/vnd.openxmlformats-officedocument." +
                     (type == "drawing" ? "" : "spreadsheetml.") + type + "+xml\"/>";
        }
        Part("[Content_Types].xml").content = types + "</Types>";
        return BuildZip(parts_);
    }
    /// Writes the workbook into the folder.
    std::filesystem::path WriteTo(const testing_support::ScratchFolder& folder)
    {
        return folder.Write("template.xlsx", Bytes());
    }

    static std::string Sheet(const std::string& name, const std::string& id,
                             const std::string& relationship)
    {
        return "<sheet name=\"" + name + "\" sheetId=\"" + id + "\" r:id=\"" + relationship +
               "\"/>";
    }
    static std::string Workbook(const std::string& content)
    {
        return "<workbook xmlns=\"" + std::string(kMain) + "\" xmlns:r=\"" +
               std::string(kRelations) + "\">" + content + "</workbook>";
    }
    static std::string Worksheet(const std::string& content)
    {
        return "<worksheet xmlns=\"" + std::string(kMain) + "\" xmlns:r=\"" +
               std::string(kRelations) + "\">" + content + "</worksheet>";
    }
    /// A part of plain shared strings.
    static std::string Strings(const std::vector<std::string>& texts)
    {
        std::string xml = "<sst xmlns=\"" + std::string(kMain) + "\">";
        for (const std::string& text : texts)
            xml += "<si><t>" + text + "</t></si>";
        return xml + "</sst>";
    }
    /// Relationships "rId1", "rId2" ... of these types and targets.
    static std::string Links(const std::vector<std::pair<std::string, std::string>>& links)
    {
        std::string xml = "<Relationships "
                          "xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">";
        std::size_t number = 0;
        for (const auto& [type, target] : links) {
            xml += "<Relationship Id=\"rId" + std::to_string(++number) + "\" Type=\"" +
                   std::string(kRelations) + "/" + type + "\" Target=\"" + target + "\"/>";
        }
        return xml + "</Relationships>";
    }

private:
    static void ReplaceAll(std::string& text, std::string_view what, std::string_view with)
    {
        for (auto at = text.find(what); at != text.npos; at = text.find(what, at + with.size()))
            text.replace(at, what.size(), with);
    }

    static constexpr std::string_view kMain =
        "http://schemas.openxmlformats.org/spreadsheetml/2006/main";
    static constexpr std::string_view kRelations =
        "http://schemas.openxmlformats.org/officeDocument/2006/relationships";

    std::vector<ZipPart> parts_;
    std::map<std::string, std::string> types_; // last words, by part
};

} // namespace orrery::test
