#pragma once

#include "zip/built_zip.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

/// A workbook of one sheet and one picture, to be changed and packed.
namespace orrery::xlsx::test {

using Parts = std::vector<orrery::test::ZipPart>;

inline constexpr std::string_view kTypeFamily = "application/vnd.openxmlformats-officedocument.";
inline const std::string kBookType = std::string(kTypeFamily) + "spreadsheetml.sheet.main+xml";
inline const std::string kSheetType = std::string(kTypeFamily) + "spreadsheetml.worksheet+xml";
inline const std::string kRelations =
    "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
inline const std::string kStrictRelations =
    "http://purl.oclc.org/ooxml/officeDocument/relationships";
inline const std::string kMain = "http://schemas.openxmlformats.org/spreadsheetml/2006/main";

inline std::string Types(const std::string& bookName = "/xl/workbook.xml",
                         const std::string& bookType = kBookType)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\r\n"
           "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\">"
           "<Default Extension=\"rels\" "
           "ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>"
           "<Default Extension=\"xml\" ContentType=\"application/xml\"/>"
           "<Default Extension=\"png\" ContentType=\"image/png\"/>"
           "<Override PartName=\"" +
           bookName + "\" ContentType=\"" + bookType +
           "\"/><Override PartName=\"/xl/worksheets/sheet1.xml\" ContentType=\"" + kSheetType +
           "\"/></Types>";
}

inline std::string Rels(const std::string& type, const std::string& target,
                        const std::string& id = "rId1")
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\r\n"
           "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">"
           "<Relationship Id=\"" +
           id + "\" Type=\"" + type + "\" Target=\"" + target + "\"/></Relationships>";
}

inline std::string Book(const std::string& root = "workbook")
{
    return "<" + root + " xmlns=\"" + kMain + "\"><sheets/></" + root + ">";
}

inline const std::string kSheet = "<worksheet xmlns=\"" + kMain + "\"><sheetData/></worksheet>";

inline Parts Workbook()
{
    return {
        {"[Content_Types].xml", Types()},
        {"_rels/.rels", Rels(kRelations + "/officeDocument", "xl/workbook.xml")},
        {"xl/workbook.xml", Book()},
        {"xl/_rels/workbook.xml.rels", Rels(kRelations + "/worksheet", "worksheets/sheet1.xml")},
        {"xl/worksheets/sheet1.xml", kSheet},
        {"xl/media/image1.png", "no picture, but bytes", true}};
}

/// The workbook with some entries replaced.
inline Parts With(const Parts& others)
{
    Parts parts = Workbook();
    for (const orrery::test::ZipPart& other : others) {
        const auto same =
            std::find_if(parts.begin(), parts.end(), [&](const orrery::test::ZipPart& part) {
                return part.name == other.name;
            });
        if (same == parts.end())
            parts.push_back(other);
        else
            *same = other;
    }
    return parts;
}

} // namespace orrery::xlsx::test
