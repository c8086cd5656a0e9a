#pragma once

#include "book/look/cell_style.h"

#include <memory>
#include <utility>

namespace orrery::look {

/// The style of a cell, kept once for all cells that have the same one. Copies are cheap.
class SharedStyle {
public:
    SharedStyle() = default; ///< that of a cell without one
    explicit SharedStyle(book::CellStyle style)
        : style_(std::make_shared<book::CellStyle>(std::move(style)))
    {
    }

    const book::CellStyle& operator*() const
    {
        static const book::CellStyle kOrdinary;
        return style_ != nullptr ? *style_ : kOrdinary;
    }
    const book::CellStyle* operator->() const { return &**this; }

    /// The style, to be changed: no other cell has it then.
    book::CellStyle& Edit()
    {
        if (style_ == nullptr || style_.use_count() > 1)
            style_ = std::make_shared<book::CellStyle>(**this);
        return *style_;
    }

private:
    std::shared_ptr<book::CellStyle> style_;
};

} // namespace orrery::look
