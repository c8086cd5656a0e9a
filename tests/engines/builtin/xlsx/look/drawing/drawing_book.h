#pragma once

#include "engines/builtin/xlsx/look/drawing/read_drawings.h"
#include "engines/builtin/xlsx/look/style/theme_part.h"
#include "engines/builtin/xlsx/package/package.h"
#include "util/scratch_folder.h"
#include "xlsx/built_book.h"

#include <string>
#include <utility>
#include <vector>

namespace orrery::xlsx::test {

/// A workbook whose sheet has one drawing part, and what is read of it.
class DrawingBook {
public:
    using Links = std::vector<std::pair<std::string, std::string>>;

    /// `links` are the relationships of the drawing part: rId1, rId2 ...
    explicit DrawingBook(const std::string& anchors, const Links& links = {})
    {
        Put("xl/worksheets/_rels/sheet1.xml.rels",
            orrery::test::BuiltBook::Links({{"drawing", "../drawings/drawing1.xml"}}));
        Put("xl/drawings/drawing1.xml", Root(anchors));
        Put("xl/drawings/_rels/drawing1.xml.rels", orrery::test::BuiltBook::Links(links));
    }
    DrawingBook& Put(const std::string& part, std::string content)
    {
        book_.Put(part, std::move(content));
        return *this;
    }
    std::vector<book::Drawing> Read()
    {
        const testing_support::ScratchFolder folder;
        const Package package(book_.WriteTo(folder));
        book::SheetLook look;
        ReadDrawings(package, "/xl/worksheets/sheet1.xml", ReadTheme(package), look);
        leftOut = look.leftOut;
        headerPictures = look.headerPictures;
        return look.drawings;
    }

    /// An anchor from B3, 9525 EMU inside, to D5.
    static std::string Anchored(const std::string& content)
    {
        return "<xdr:twoCellAnchor><xdr:from><xdr:col>1</xdr:col><xdr:colOff>9525</xdr:colOff>"
               "<xdr:row>2</xdr:row><xdr:rowOff>0</xdr:rowOff></xdr:from><xdr:to><xdr:col>3</"
               "xdr:col>"
               "<xdr:colOff>0</xdr:colOff><xdr:row>4</xdr:row><xdr:rowOff>19050</xdr:rowOff></"
               "xdr:to>" +
               content + "<xdr:clientData/></xdr:twoCellAnchor>";
    }
    /// A shape with these properties and what follows them.
    static std::string Shape(const std::string& properties, const std::string& rest = {},
                             const std::string& common = "id=\"2\" name=\"Box\"")
    {
        return "<xdr:sp><xdr:nvSpPr><xdr:cNvPr " + common +
               "/><xdr:cNvSpPr/></xdr:nvSpPr><xdr:spPr>" + properties + "</xdr:spPr>" + rest +
               "</xdr:sp>";
    }

    std::vector<book::LeftOut> leftOut;
    std::vector<book::HeaderPicture> headerPictures;

private:
    static std::string Root(const std::string& anchors)
    {
        return "<xdr:wsDr "
               "xmlns:xdr=\"http://schemas.openxmlformats.org/drawingml/2006/spreadsheetDrawing\" "
               "xmlns:a=\"http://schemas.openxmlformats.org/drawingml/2006/main\" "
               "xmlns:c=\"http://schemas.openxmlformats.org/drawingml/2006/chart\" "
               "xmlns:mc=\"http://schemas.openxmlformats.org/markup-compatibility/2006\" "
               "xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\">" +
               anchors + "</xdr:wsDr>";
    }

    orrery::test::BuiltBook book_;
};

} // namespace orrery::xlsx::test
