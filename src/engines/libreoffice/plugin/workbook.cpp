#include "engines/libreoffice/plugin/workbook.h"

#include "engines/builtin/xlsx/package.h"
#include "engines/builtin/xlsx/workbook_part.h"
#include "engines/common/sheet_names.h"
#include "engines/libreoffice/plugin/document.h"

#include <com/sun/star/awt/XTopWindow.hpp>
#include <com/sun/star/container/XNameAccess.hpp>
#include <com/sun/star/document/XUndoManagerSupplier.hpp>
#include <com/sun/star/sheet/XScenario.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/util/XProtectable.hpp>

#include <algorithm>
#include <utility>

namespace orrery::libreoffice {
namespace {

using css::uno::UNO_QUERY_THROW;
using util::ErrorKind;

/// Whether a package protects its sheets' names and order, which LibreOffice does not read.
bool HasProtectedStructure(const std::filesystem::path& path)
{
    try {
        const xlsx::Package package(path);
        const std::string& part = package.MainPart();
        return xlsx::WorkbookPart(package.ReadXml(part), part).IsStructureProtected();
    }
    catch (const Error&) { // LibreOffice mends some files that are damaged
        return false;
    }
}

/// Scenarios are sheets to LibreOffice, which it counts but does not write: names of sheets behind
/// them would be those of others, or of none.
void RemoveScenarios(const Reference<css::sheet::XSpreadsheets>& sheets)
{
    for (const auto& name : sheets->getElementNames()) {
        const Reference<css::sheet::XScenario> scenario(sheets->getByName(name), UNO_QUERY_THROW);
        if (scenario->getIsScenario())
            sheets->removeByName(name);
    }
}

} // namespace

Workbook::Workbook(Office& office, const std::filesystem::path& path, const Switches& switches)
    : office_(office), model_(OpenDocument(office, path, LoadMode::AsTemplate))
{
    office_.Call([&] {
        filter_ = FilterOf(model_);
        isBinary_ = filter_ == kBinaryFilter || filter_ == kBinaryTemplateFilter;
        Adopt();
        if (!isBinary_) {
            if (HasProtectedStructure(path))
                Reference<css::util::XProtectable>(model_, UNO_QUERY_THROW)->protect("");
            RemoveScenarios(sheets_);
        }
        // Nothing that is written here will be taken back.
        const Reference<css::document::XUndoManagerSupplier> undo(model_, UNO_QUERY_THROW);
        undo->getUndoManager()->lock();
    });
    Show(switches);
}

generate::Worksheet* Workbook::FindWorksheet(std::string_view name)
{
    for (const std::string& each : SheetNames()) {
        if (engines::SameSheetName(each, name))
            return &SheetOf(each);
    }
    return nullptr;
}

void Workbook::SaveAs(const std::filesystem::path& target, generate::AccessMode /*accessMode*/)
{
    StoreDocument(office_, model_, filter_, target);
    saved_ = target;
}

void Workbook::Show(const Switches& switches)
{
    if (switches.visible && !saved_.empty())
        OpenSaved();
    office_.Call([&] {
        if (isLocked_ == switches.screenUpdating) {
            if (isLocked_)
                model_->unlockControllers();
            else
                model_->lockControllers();
            isLocked_ = !isLocked_;
        }
        if (!isForUser_)
            return;
        window_->setEnable(switches.interactive);
        window_->setVisible(switches.visible);
        isSeen_ = switches.visible;
    });
}

/// The document that the calendar was written into knows nothing of the file that it was saved to.
/// The user gets the file itself.
void Workbook::OpenSaved()
{
    const auto document = OpenDocument(office_, std::exchange(saved_, {}), LoadMode::ForUser);
    office_.Discard(std::exchange(model_, document));
    office_.Call([&] {
        Adopt();
        const Reference<css::awt::XTopWindow> top(window_, css::uno::UNO_QUERY);
        if (top.is())
            top->toFront();
    });
    isForUser_ = true;
    isLocked_ = false;
    known_.clear();
}

void Workbook::Adopt()
{
    const Reference<css::sheet::XSpreadsheetDocument> document(model_, UNO_QUERY_THROW);
    sheets_ = document->getSheets();
    window_ = model_->getCurrentController()->getFrame()->getContainerWindow();
}

std::vector<std::string> Workbook::SheetNames() const
{
    return office_.Call([&] {
        const auto names = sheets_->getElementNames();
        std::vector<std::string> texts(static_cast<std::size_t>(names.getLength()));
        std::transform(names.begin(), names.end(), texts.begin(), FromUno);
        return texts;
    });
}

Worksheet& Workbook::SheetOf(const std::string& name)
{
    // A sheet is renamed through its own object alone, so its name tells which it is.
    const auto known = std::find_if(known_.begin(), known_.end(),
                                    [&](const auto& sheet) { return sheet->Name() == name; });
    if (known != known_.end())
        return **known;
    Reference<css::sheet::XSpreadsheet> sheet = office_.Call([&] {
        return Reference<css::sheet::XSpreadsheet>(sheets_->getByName(ToUno(name)),
                                                   UNO_QUERY_THROW);
    });
    known_.push_back(std::make_unique<Worksheet>(*this, name, sheet));
    return *known_.back();
}

void Workbook::CheckStructure(const std::string& sheet) const
{
    const bool isProtected = office_.Call([&] {
        const Reference<css::util::XProtectable> structure(model_, UNO_QUERY_THROW);
        return static_cast<bool>(structure->isProtected());
    });
    if (isProtected)
        throw Error(ErrorKind::StructureProtected, sheet);
}

} // namespace orrery::libreoffice
