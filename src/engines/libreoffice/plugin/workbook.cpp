#include "engines/libreoffice/plugin/workbook.h"

#include "engines/common/sheet_names.h"
#include "engines/libreoffice/plugin/document.h"

#include <com/sun/star/awt/XTopWindow.hpp>
#include <com/sun/star/container/XNameAccess.hpp>
#include <com/sun/star/document/XUndoManagerSupplier.hpp>
#include <com/sun/star/sheet/XScenario.hpp>
#include <com/sun/star/util/XProtectable.hpp>

#include <algorithm>
#include <utility>

namespace orrery::libreoffice {
namespace {

using css::uno::UNO_QUERY_THROW;

/// LibreOffice counts scenarios as sheets but does not write them: sheet-level names after them
/// would belong to the wrong sheets or to none.
void RemoveScenarios(const Reference<css::sheet::XSpreadsheets>& sheets)
{
    for (const auto& name : sheets->getElementNames()) {
        const Reference<css::sheet::XScenario> scenario(sheets->getByName(name), UNO_QUERY_THROW);
        if (scenario->getIsScenario())
            sheets->removeByName(name);
    }
}

} // namespace

Workbook::Workbook(Office& office, const std::filesystem::path& path, const Switches& switches,
                   const StructureReader& hasProtectedStructure)
    : office_(office), sheets_(office), model_(OpenDocument(office, path, LoadMode::AsTemplate))
{
    office_.Call([&] {
        filter_ = FilterOf(model_);
        Adopt();
        if (!sheets_.IsBinary()) {
            if (hasProtectedStructure && hasProtectedStructure(path))
                Reference<css::util::XProtectable>(model_, UNO_QUERY_THROW)->protect("");
            RemoveScenarios(sheets_.Collection());
        }
        // Nothing written here will be undone.
        const Reference<css::document::XUndoManagerSupplier> undo(model_, UNO_QUERY_THROW);
        undo->getUndoManager()->lock();
    });
    Show(switches);
}

book::Worksheet* Workbook::FindWorksheet(std::string_view name)
{
    for (const std::string& each : sheets_.Names()) {
        if (book::SameName(each, name))
            return &sheets_.Of(each);
    }
    return nullptr;
}

void Workbook::SaveAs(const std::filesystem::path& target, book::AccessMode /*accessMode*/)
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

/// The document that the calendar was written to has no file. The user gets the saved file instead.
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
}

void Workbook::Adopt()
{
    sheets_.Adopt(model_, filter_ == kBinaryFilter || filter_ == kBinaryTemplateFilter);
    window_ = model_->getCurrentController()->getFrame()->getContainerWindow();
}

} // namespace orrery::libreoffice
